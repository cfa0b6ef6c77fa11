// The layout of the runtime's arrays.
#pragma once

#include <quendal/automation.h>

#include <cstddef>
#include <cstdint>
#include <limits>

#include "automation/posix/teardown.h"

namespace quendal::automation {

/// What the runtime keeps before the descriptor of each array it made (FADF_HAVEVARTYPE tells).
struct ArrayRecord {
  Teardown teardown;
  std::uint32_t capacity;  // bytes for the elements
  VARTYPE type;
};

/// Bytes of the largest array. Sizes and indexes then fit in 32 bits everywhere.
constexpr std::size_t kLargestArray = std::numeric_limits<LONG>::max();

/// Type of the elements, told by the features where the array is not the runtime's own.
[[nodiscard]] VARTYPE elementTypeOf(const SAFEARRAY& array) noexcept;

/// Number of elements in all dimensions.
[[nodiscard]] std::size_t elementCountOf(const SAFEARRAY& array) noexcept;

/// A new array whose elements are all zero: Empty, null, 0. `bounds` is in the descriptor's order,
/// the last dimension first. Null when the bounds are bad or memory is short.
[[nodiscard]] SAFEARRAY* newArray(VARTYPE type, UINT dimensions,
                                  const SAFEARRAYBOUND* bounds) noexcept;

/// Frees what `count` elements hold and sets them to zero.
void destroyElements(VARTYPE type, void* elements, std::size_t count) noexcept;

}  // namespace quendal::automation
