#include "functions/json/number.h"

#include <quendal/error.h>

#include <bit>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string>

#include "functions/json/decimal_double.h"
#include "functions/json/characters.h"

namespace quendal {
namespace {

// The parts of a number. The mantissa is good for as many digits as surely fit into it.
struct Scanned {
  static constexpr std::ptrdiff_t kMostDigits = 19;

  std::uint64_t mantissa = 0;
  std::ptrdiff_t digits = 0;
  std::int64_t power = 0;  // of ten, for a mantissa of all digits
  const char16_t* end = nullptr;
};

// The number that four characters are; false when they are not all digits.
inline bool readFourDigits(const char16_t* at, std::uint64_t& number) noexcept {
  constexpr std::uint64_t kEach = kEachInJsonWord;
  const std::uint64_t digits = loadJsonWord(at) ^ (kEach * u'0');
  if (((digits | (digits + kEach * (0x8000 - 10))) & (kEach * 0x8000)) != 0) return false;
  // The first digit is in the lowest lane; the sum of all arrives in the highest.
  constexpr std::uint64_t kWeights =
      1 | 10 << 16 | std::uint64_t{100} << 32 | std::uint64_t{1000} << 48;
  number = (digits * kWeights) >> 48;
  return true;
}

inline const char16_t* scanDigits(const char16_t* at, const char16_t* end,
                                  std::uint64_t& number) noexcept {
  if constexpr (std::endian::native == std::endian::little) {
    std::uint64_t four = 0;
    for (; static_cast<std::size_t>(end - at) >= kJsonWord && readFourDigits(at, four);
         at += kJsonWord)
      number = number * 10'000 + four;
  }
  for (; at != end && isJsonDigit(*at); ++at)
    number = number * 10 + static_cast<std::uint64_t>(*at - u'0');
  return at;
}

// Where the digits of an exponent begin; null when there is no exponent.
inline const char16_t* exponentDigits(const char16_t* at, const char16_t* end) noexcept {
  if (at == end || (*at != u'e' && *at != u'E')) return nullptr;
  ++at;
  if (at != end && (*at == u'-' || *at == u'+')) ++at;
  return at != end && isJsonDigit(*at) ? at : nullptr;
}

// Saturates where no mantissa brings the number back into a double's range.
std::int64_t readExponent(const char16_t*& at, const char16_t* end) noexcept {
  constexpr std::int64_t kBeyond = 1'000'000'000'000'000;
  const bool negative = at[-1] == u'-';
  std::int64_t exponent = 0;
  for (; at != end && isJsonDigit(*at); ++at)
    if (exponent < kBeyond) exponent = exponent * 10 + (*at - u'0');
  return negative ? -exponent : exponent;
}

// Reads from the first digit on.
inline Scanned scanNumber(const char16_t* at, const char16_t* end) noexcept {
  Scanned number;
  const char16_t* const first = at;
  at = *at == u'0' ? at + 1 : scanDigits(at, end, number.mantissa);
  number.digits = at - first;
  if (end - at >= 2 && *at == u'.' && isJsonDigit(at[1])) {
    const char16_t* const fraction = at + 1;
    at = scanDigits(fraction, end, number.mantissa);
    number.digits += at - fraction;
    number.power = fraction - at;
  }
  number.end = at;
  if (const char16_t* exponent = exponentDigits(at, end)) {
    number.power += readExponent(exponent, end);
    number.end = exponent;
  }
  return number;
}

// Decimal exponent of the first digit that is not 0.
std::int64_t magnitudeOf(const char16_t* begin, const Scanned& number) noexcept {
  std::int64_t digitsBehind = number.digits;
  for (const char16_t* at = begin; digitsBehind > 0; ++at) {
    if (!isJsonDigit(*at)) continue;
    --digitsBehind;
    if (*at != u'0') break;
  }
  return digitsBehind + number.power;
}

// The value of any number, by the standard library.
double convertText(const char16_t* begin, const Scanned& number) {
  const std::string text(begin, number.end);  // ASCII
  double value = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
  if (read.ec == std::errc()) return value;
  if (magnitudeOf(begin, number) > 0) throw AutomationError(error_number::kOverflow);
  return 0;
}

}  // namespace

JsonNumber readJsonNumber(const char16_t* begin, const char16_t* end) {
  constexpr std::uint64_t kExactWholes = std::uint64_t{1} << 53;
  const bool isNegative = *begin == u'-';
  if (isNegative) ++begin;
  const Scanned number = scanNumber(begin, end);
  double value = 0;
  if (number.digits > Scanned::kMostDigits || number.power < kLeastDecimalPower ||
      number.power > kGreatestDecimalPower)
    value = convertText(begin, number);
  else if (number.mantissa == 0 || (number.power == 0 && number.mantissa < kExactWholes))
    value = static_cast<double>(number.mantissa);
  else
    value = decimalToDouble(number.mantissa, static_cast<int>(number.power));
  return {isNegative ? -value : value, number.end};
}

}  // namespace quendal
