// Automation objects made of lambdas, for everything that the library calls by name: page
// contexts, collections, error objects; and arrays.
#pragma once

#include <quendal/host_object.h>

#include <utility>
#include <vector>

#include "core/array_view.h"
#include "core/dictionary.h"

namespace quendal::test {

using ScriptObject = HostObject;

/// An array with these values converted to its element type, as a script's `Array(...)`.
[[nodiscard]] inline Variant arrayOf(const std::vector<Variant>& values, VARTYPE type = VT_VARIANT,
                                     LONG lowerBound = 0) {
  SAFEARRAYBOUND bound{static_cast<ULONG>(values.size()), lowerBound};
  Variant result = Variant::array(SafeArrayCreate(type, 1, &bound), type);
  const ArrayView view(result);
  for (std::size_t i = 0; i < values.size(); ++i) view.put(i, elementOf(values[i], type).release());
  return result;
}

/// A dictionary of these entries.
[[nodiscard]] inline Dictionary dictionaryOf(
    const std::vector<std::pair<Variant, Variant>>& entries) {
  Dictionary dictionary = Dictionary::create();
  for (const auto& [key, item] : entries) dictionary.add(key, item);
  return dictionary;
}

}  // namespace quendal::test
