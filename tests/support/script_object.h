// Automation objects made of lambdas, for everything that the library calls by name: page
// contexts, collections, error objects; and arrays.
#pragma once

#include <quendal/host_object.h>

#include <vector>

#include "core/array_view.h"

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

}  // namespace quendal::test
