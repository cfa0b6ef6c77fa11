// `JSON`: encodes a page's values as JSON text and decodes JSON text into values.
#pragma once

#include <string>

#include "core/class_description.h"
#include "core/variant_ref.h"

namespace quendal {

class Json {
 public:
  static constexpr std::u16string_view kClassName = u"JSON";

  /// The JSON text of a value: see json/encoder.h.
  Variant encode(VariantRef& value);
  /// The value of a JSON text: see json/decoder.h. Other values than text are read as their text.
  Variant decode(VariantRef& text);
};

template <>
const ClassDescription& describe<Json>();

}  // namespace quendal
