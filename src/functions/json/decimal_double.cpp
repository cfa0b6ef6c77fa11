// The mantissa is multiplied by a 128-bit approximation of the power of five, whose error cannot
// reach the bits that decide for the powers in the table; the power of two goes to the exponent.
// The method is that of Eisel and Lemire ("Number Parsing at a Gigabyte per Second", 2021).
#include "functions/json/decimal_double.h"

#include <array>
#include <bit>
#include <cstddef>

namespace quendal {
namespace {

struct Wide {
  std::uint64_t high = 0;
  std::uint64_t low = 0;
};

constexpr Wide product(std::uint64_t a, std::uint64_t b) noexcept {
  constexpr std::uint64_t kHalf = 0xFFFFFFFF;
  const std::uint64_t low = (a & kHalf) * (b & kHalf);
  const std::uint64_t middle1 = (a >> 32) * (b & kHalf) + (low >> 32);
  const std::uint64_t middle2 = (a & kHalf) * (b >> 32) + (middle1 & kHalf);
  return {(a >> 32) * (b >> 32) + (middle1 >> 32) + (middle2 >> 32),
          (middle2 << 32) | (low & kHalf)};
}

constexpr void shiftLeft(Wide& value, bool bit) noexcept {
  value.high = (value.high << 1) | (value.low >> 63);
  value.low = (value.low << 1) | (bit ? 1 : 0);
}

constexpr bool isNormal(const Wide& value) noexcept { return (value.high >> 63) != 0; }

// 5^power with its highest bit moved to the top: exact for those of the table.
constexpr Wide powerOfFive(int power) noexcept {
  Wide value{0, 1};
  for (int i = 0; i < power; ++i) {
    const Wide low = product(value.low, 5);
    value = {value.high * 5 + low.high, low.low};
  }
  while (!isNormal(value)) shiftLeft(value, false);
  return value;
}

// The first 128 bits of 1 / 5^power, rounded up; the divisor has at most 63 bits.
constexpr Wide reciprocalOfFive(int power) noexcept {
  std::uint64_t divisor = 1;
  for (int i = 0; i < power; ++i) divisor *= 5;
  Wide quotient;
  std::uint64_t rest = 1;
  while (!isNormal(quotient)) {
    rest <<= 1;
    const bool bit = rest >= divisor;
    if (bit) rest -= divisor;
    shiftLeft(quotient, bit);
  }
  if (++quotient.low == 0) ++quotient.high;
  return quotient;
}

constexpr auto kPowersOfFive = [] {
  std::array<Wide, kGreatestDecimalPower - kLeastDecimalPower + 1> table{};
  for (int power = kLeastDecimalPower; power <= kGreatestDecimalPower; ++power) {
    table[static_cast<std::size_t>(power - kLeastDecimalPower)] =
        power < 0 ? reciprocalOfFive(-power) : powerOfFive(power);
  }
  return table;
}();

constexpr int kMantissaBits = 52;
constexpr int kGuardBits = 3;

// The top 128 bits of the product of a mantissa whose top bit is set and a power of five. The lower
// half of the power is taken in only where it can reach the bits that decide.
Wide scaled(std::uint64_t mantissa, int power) noexcept {
  constexpr std::uint64_t kUndecided = ~std::uint64_t{0} >> (kMantissaBits + kGuardBits);
  const Wide& five = kPowersOfFive[static_cast<std::size_t>(power - kLeastDecimalPower)];
  Wide result = product(mantissa, five.high);
  if ((result.high & kUndecided) == kUndecided) {
    const std::uint64_t more = product(mantissa, five.low).high;
    result.low += more;
    if (result.low < more) ++result.high;
  }
  return result;
}

}  // namespace

double decimalToDouble(std::uint64_t mantissa, int power) noexcept {
  const int leadingZeros = std::countl_zero(mantissa);
  const Wide result = scaled(mantissa << leadingZeros, power);
  const int upperBit = static_cast<int>(result.high >> 63);
  const int shift = upperBit + 64 - kMantissaBits - kGuardBits;
  std::uint64_t bits = result.high >> shift;  // one bit more than the double has

  // Exactly between two doubles goes to the even one. Only powers of five that divide or fit into
  // 64 bits can give such a product.
  constexpr int kLeastTie = -4;
  constexpr int kGreatestTie = 23;
  if (result.low <= 1 && power >= kLeastTie && power <= kGreatestTie && (bits & 3) == 1 &&
      bits << shift == result.high)
    bits &= ~std::uint64_t{1};
  bits = (bits + (bits & 1)) >> 1;

  // floor(power * log2(10)), as a product with log2(10) in 16 binary places.
  constexpr int kLog2Of10 = 217706;
  constexpr int kExponentBias = 1023;
  int exponent = ((kLog2Of10 * power) >> 16) + 63 + upperBit - leadingZeros + kExponentBias;
  if (bits == std::uint64_t{2} << kMantissaBits) {
    bits >>= 1;
    ++exponent;
  }
  bits &= ~(std::uint64_t{1} << kMantissaBits);
  return std::bit_cast<double>(static_cast<std::uint64_t>(exponent) << kMantissaBits | bits);
}

}  // namespace quendal
