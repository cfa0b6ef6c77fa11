// `ClsString`: text functions for page scripts.
#pragma once

#include <cstdint>
#include <string>

#include "core/class_description.h"
#include "core/variant_ref.h"

namespace quendal {

class StringFunctions {
 public:
  static constexpr std::u16string_view kClassName = u"ClsString";

  Variant formatDateTime(VariantRef& date, VariantRef& format);
  Variant numberToWords(const VARIANT& number);
  Variant htmlEncode(const VARIANT& text);
  Variant urlEncode(VariantRef& text);
  Variant urlDecode(VariantRef& text);
  Variant safeSqlString(const VARIANT& text);
  Variant safeFileName(const VARIANT& text);
  Variant md5(VariantRef& text);
  Variant uuid();
  Boolean isTimeOnly(VariantRef& value);
  Boolean isDateOnly(VariantRef& value);
  Variant capitalize(const VARIANT& sentence);
  Variant padLeft(const VARIANT& text, const VARIANT& fill, const VARIANT& length);
  Variant padRight(const VARIANT& text, const VARIANT& fill, const VARIANT& length);
  Variant extractFileName(const VARIANT& path);
  Variant extractFilePath(const VARIANT& path);
  Variant formatFileSize(const VARIANT& size, const VARIANT& alsoShowBytes);
  Variant appendToUtf8File(const VARIANT& file, const VARIANT& text);
};

template <>
const ClassDescription& describe<StringFunctions>();

}  // namespace quendal
