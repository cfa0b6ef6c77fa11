#include "automation/posix/number_text.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdlib>

namespace quendal::automation {
namespace {

// What is written digit by digit goes through a narrow buffer.
using Digits = std::array<char, 48>;

void append(NumberText& text, char c) noexcept {
  text.characters[text.length++] = static_cast<char16_t>(c);
}

void append(NumberText& text, std::string_view characters) noexcept {
  std::copy(characters.begin(), characters.end(), text.characters.begin() + text.length);
  text.length += characters.size();
}

std::string_view writeMagnitude(UInt128 magnitude, Digits& digits) noexcept {
  std::size_t first = digits.size();
  do {
    digits[--first] = static_cast<char>('0' + static_cast<int>(magnitude % 10));
    magnitude /= 10;
  } while (magnitude != 0);
  return {digits.data() + first, digits.size() - first};
}

// Significant digits, the first not 0, and the decimal exponent of the first.
struct Scientific {
  Digits digits;
  std::size_t count = 0;
  int exponent = 0;
};

void dropTrailingZeros(Scientific& number) noexcept {
  while (number.count > 1 && number.digits[number.count - 1] == '0') --number.count;
}

constexpr int kMostFives = 27;  // 5^27 is the last power of five that has 64 bits

constexpr auto kFives = [] {
  std::array<std::uint64_t, kMostFives + 1> powers{1};
  for (std::size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * 5;
  return powers;
}();

// magnitude / 2^places, rounded half to even; the places are from 1 to 127.
std::uint64_t roundedShift(UInt128 magnitude, int places) noexcept {
  const auto whole = static_cast<std::uint64_t>(magnitude >> places);
  const UInt128 half = UInt128{1} << (places - 1);
  const UInt128 rest = magnitude & (half * 2 - 1);
  return rest > half || (rest == half && whole % 2 != 0) ? whole + 1 : whole;
}

// The digits of a double that is neither very large nor very small, nor a large whole number, in
// whole numbers alone: it is an integer times a power of two, and to move its decimal point takes
// powers of five and two. Several times as fast as the library's way.
bool writeUsual(double magnitude, Scientific& number) noexcept {
  constexpr std::uint64_t kFirstTooLong = 1'000'000'000'000'000;
  constexpr int kFractionBits = 52;
  constexpr int kBias = 1023;
  constexpr std::uint64_t kLeadingBit = std::uint64_t{1} << kFractionBits;
  const auto bits = std::bit_cast<std::uint64_t>(magnitude);
  const std::uint64_t mantissa = (bits & (kLeadingBit - 1)) | kLeadingBit;
  const int exponent = static_cast<int>(bits >> kFractionBits) - kBias - kFractionBits;
  // floor(log10(2^n)), for the highest bit alone: the number's own exponent or one less.
  number.exponent = ((exponent + kFractionBits) * 78913) >> 18;
  std::uint64_t digits = 0;
  for (;; ++number.exponent) {
    const int move = kRealDigits - 1 - number.exponent;
    const int places = -(exponent + move);
    if (move < 0 || move > kMostFives || places < 1 || places > 127) return false;
    digits = roundedShift(UInt128{mantissa} * kFives[static_cast<std::size_t>(move)], places);
    if (digits < kFirstTooLong) break;
  }
  number.count = kRealDigits;
  for (std::size_t i = number.count; i-- > 0; digits /= 10)
    number.digits[i] = static_cast<char>('0' + digits % 10);
  dropTrailingZeros(number);
  return true;
}

Scientific scientificOf(double magnitude, int precision) noexcept {
  Scientific result;
  if (precision == kRealDigits && writeUsual(magnitude, result)) return result;
  std::array<char, 48> buffer;
  const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                     std::chars_format::scientific, precision - 1);
  char* const mark = std::find(buffer.data(), written.ptr, 'e');
  for (const char* c = buffer.data(); c != mark; ++c) {
    if (*c != '.') result.digits[result.count++] = *c;
  }
  dropTrailingZeros(result);
  const char* exponent = mark + 1;
  if (*exponent == '+') ++exponent;
  std::from_chars(exponent, written.ptr, result.exponent);
  return result;
}

}  // namespace

NumberText realText(double value, int digits) noexcept {
  NumberText text;
  if (std::isnan(value)) {
    append(text, std::signbit(value) ? "-1.#IND" : "1.#QNAN");
    return text;
  }
  if (value == 0) {  // negative zero has no sign as text
    append(text, '0');
    return text;
  }
  if (value < 0) append(text, '-');
  if (std::isinf(value)) {
    append(text, "1.#INF");
    return text;
  }

  const Scientific number = scientificOf(std::fabs(value), digits);
  const std::string_view significant(number.digits.data(), number.count);
  const int decimals = static_cast<int>(number.count) - 1 - number.exponent;
  const bool isTooSmall = number.exponent < 0 && decimals > digits;
  if (isTooSmall || number.exponent >= digits) {
    append(text, significant[0]);
    if (significant.size() > 1) append(text, '.');
    append(text, significant.substr(1));
    append(text, number.exponent < 0 ? "E-" : "E+");
    const int exponent = std::abs(number.exponent);
    if (exponent < 10) append(text, '0');
    Digits buffer;
    append(text, writeMagnitude(static_cast<UInt128>(exponent), buffer));
  } else if (number.exponent < 0) {
    append(text, "0.");
    for (int zeros = -1 - number.exponent; zeros > 0; --zeros) append(text, '0');
    append(text, significant);
  } else {
    const auto whole = static_cast<std::size_t>(number.exponent) + 1;
    append(text, significant.substr(0, whole));
    for (std::size_t i = significant.size(); i < whole; ++i) append(text, '0');
    if (significant.size() > whole) {
      append(text, '.');
      append(text, significant.substr(whole));
    }
  }
  return text;
}

NumberText exactText(const ExactNumber& number) noexcept {
  ExactNumber shortest = number;
  while (shortest.exponent < 0 && shortest.magnitude % 10 == 0) {
    shortest.magnitude /= 10;
    ++shortest.exponent;
    if (shortest.magnitude == 0) shortest.exponent = 0;
  }
  Digits buffer;
  const std::string_view digits = writeMagnitude(shortest.magnitude, buffer);
  const auto decimals = static_cast<std::size_t>(-shortest.exponent);
  NumberText text;
  if (shortest.negative && shortest.magnitude != 0) append(text, '-');
  if (decimals == 0) {
    append(text, digits);
  } else if (digits.size() > decimals) {
    append(text, digits.substr(0, digits.size() - decimals));
    append(text, '.');
    append(text, digits.substr(digits.size() - decimals));
  } else {
    append(text, "0.");
    for (std::size_t i = digits.size(); i < decimals; ++i) append(text, '0');
    append(text, digits);
  }
  return text;
}

}  // namespace quendal::automation
