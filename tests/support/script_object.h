// Automation objects made of lambdas, for everything that the library calls by name: page
// contexts, collections, error objects.
#pragma once

#include <quendal/host_object.h>

#include <vector>

namespace quendal::test {

using ScriptObject = HostObject;

/// A zero-based array of values, as a script's `Array(...)`.
[[nodiscard]] Variant arrayOf(const std::vector<Variant>& elements);

}  // namespace quendal::test
