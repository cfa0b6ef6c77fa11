// Sorting a page's array where it stands.
#pragma once

#include <cstdint>

#include "arrays/value_order.h"

namespace quendal {

/// Stands for the array's own bound.
inline constexpr std::int32_t kOwnBound = -1;

/// Sorts the elements of `array` (which is not a reference) from `lowerBound` to `upperBound`.
/// Equal elements keep their order; objects move as references. Raises 5002 with a message for
/// what is no allocated array of one dimension and for bounds outside the array, and as orderOf
/// for elements that cannot be compared; nothing has moved then.
void qSortInPlace(const VARIANT& array, std::int32_t lowerBound, std::int32_t upperBound,
                  const SortOrder& order);

}  // namespace quendal
