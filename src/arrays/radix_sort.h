// Sorting many numbers without comparing them.
#pragma once

#include <cstdint>
#include <vector>

namespace quendal {

/// A key whose unsigned order is the order of the numbers; and the number back. Not for NaN.
[[nodiscard]] std::uint64_t radixKey(double number) noexcept;
[[nodiscard]] double numberOfRadixKey(std::uint64_t key) noexcept;

/// Sorts in ascending order; many keys in time proportional to their number. Throws std::bad_alloc
/// and then has moved nothing.
void sortKeys(std::vector<std::uint64_t>& keys);

}  // namespace quendal
