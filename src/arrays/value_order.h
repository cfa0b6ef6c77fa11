// The order of many values, for sorting.
#pragma once

#include <cstdint>
#include <vector>

#include "core/array_view.h"

namespace quendal {

enum class CompareMode : std::int32_t {
  Binary = 0,  // by UTF-16 units
  Text = 1,    // in the user's locale, without regard to case
};

struct SortOrder {
  CompareMode mode = CompareMode::Text;
  bool descending = false;
};

/// Where the values from `first` on come from when they are in order: position 0 is `first`. Every
/// number is less than any text; Empty is 0 where there are numbers, otherwise no text; an object
/// is its default value. Equal values keep their order. Raises 94 for Null, 13 for arrays and error
/// values, and as plainValueOf for objects.
[[nodiscard]] std::vector<std::uint32_t> orderOf(const ArrayView& values, std::size_t first,
                                                 std::size_t count, const SortOrder& order);

}  // namespace quendal
