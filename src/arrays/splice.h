// Taking elements out of a page's array and putting others in their place.
#pragma once

#include <cstdint>
#include <span>

#include "core/variant_ref.h"

namespace quendal {

/// Elements by position: 0 is the first one, whatever the array's lower bound.
struct ElementRange {
  std::size_t start;
  std::size_t count;
};

/// A position as pages give it: a negative one counts from the end; what lies outside clamps.
[[nodiscard]] std::size_t clampedPosition(std::int32_t position, std::size_t size) noexcept;

/// Number of elements of the array that a value holds; 0 for an unallocated one. Raises 9 for
/// several dimensions.
[[nodiscard]] std::size_t elementCountOf(const VARIANT& array);

/// Copies of some elements, in a new zero-based array of Variants. `array` is not a reference.
[[nodiscard]] Variant copyElements(const VARIANT& array, ElementRange range);

/// Replaces the elements of a range by `values` and returns them in a new zero-based array of
/// Variants. The lower bound stays; an unallocated array is created when there are values. Raises
/// 10 when the number of elements changes and the host does not let it, 13, 6, 94 or 424 when the
/// array cannot hold a value, and then has changed nothing.
Variant spliceElements(VariantRef& variable, ElementRange range, std::span<const VARIANT> values);

}  // namespace quendal
