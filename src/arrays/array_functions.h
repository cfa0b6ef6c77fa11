// `ClsArray`: stack operations, slices and sorting on a page's own arrays, which change in place.
#pragma once

#include <cstdint>
#include <string>

#include "core/class_description.h"
#include "core/parameters.h"

namespace quendal {

class ArrayFunctions {
 public:
  static constexpr std::u16string_view kClassName = u"ClsArray";

  Variant getUBound(VariantRef& array);
  Variant getLBound(VariantRef& array);
  void push(VariantRef& array, const VARIANT& value);
  Variant pop(VariantRef& array);
  Variant shift(VariantRef& array);
  void unshift(VariantRef& array, const VARIANT& value);
  Variant slice(VariantRef& array, Boolean remove, std::int32_t start, std::int32_t end);
  Variant splice(VariantRef& array, std::int32_t offset, std::int32_t length, ArgumentList values);
  void reverse(VariantRef& array);
  Boolean sort(VariantRef& array, std::int32_t lowerBound, std::int32_t upperBound,
               Boolean descending, std::int32_t compareMode, Boolean noAlerts);
};

template <>
const ClassDescription& describe<ArrayFunctions>();

}  // namespace quendal
