// The nearest double of a short decimal number, without a detour through text.
#pragma once

#include <cstdint>

namespace quendal {

inline constexpr int kLeastDecimalPower = -27;
inline constexpr int kGreatestDecimalPower = 55;

/// The double nearest to mantissa * 10^power, ties to even. `mantissa` is not 0 and `power` is from
/// kLeastDecimalPower to kGreatestDecimalPower.
[[nodiscard]] double decimalToDouble(std::uint64_t mantissa, int power) noexcept;

}  // namespace quendal
