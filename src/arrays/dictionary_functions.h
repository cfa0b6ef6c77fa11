// `ClsDictionary`: sorting of dictionaries.
#pragma once

#include <quendal/object.h>

#include <cstdint>

#include "core/class_description.h"

namespace quendal {

class DictionaryFunctions {
 public:
  static constexpr std::u16string_view kClassName = u"ClsDictionary";

  /// Puts the entries of a dictionary in order of key or item; the same object, stable for equal
  /// entries. Compare mode 0 is binary, 1 without case. Returns the dictionary.
  Variant sort(const Object& dictionary, Boolean sortByKey, Boolean descending,
               std::int32_t compareMode);
};

template <>
const ClassDescription& describe<DictionaryFunctions>();

}  // namespace quendal
