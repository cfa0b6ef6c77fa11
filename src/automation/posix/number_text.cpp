#include "automation/posix/number_text.h"

#include <algorithm>
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

// Digits of which so many stand behind the point, or before as many zeros when they are negative.
void appendPlain(NumberText& text, std::string_view digits, int decimals) noexcept {
  const int whole = static_cast<int>(digits.size()) - decimals;
  const auto split = std::min(static_cast<std::size_t>(std::max(whole, 0)), digits.size());
  append(text, split == 0 ? "0" : digits.substr(0, split));
  for (; decimals < 0; ++decimals) append(text, '0');
  if (split < digits.size()) append(text, '.');
  for (int zeros = whole; zeros < 0; ++zeros) append(text, '0');
  append(text, digits.substr(split));
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

// As the standard library writes a number: with so many decimals, or with the fewest digits that
// tell it from other doubles.
template <class... Decimals>
Scientific written(double magnitude, Decimals... decimals) noexcept {
  std::array<char, 48> buffer;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                 std::chars_format::scientific, decimals...);
  char* const mark = std::find(buffer.data(), end.ptr, 'e');
  Scientific result;
  result.digits[0] = buffer[0];  // a point is next, if more digits are
  char* const more = std::min(buffer.data() + 2, mark);
  result.count = static_cast<std::size_t>(std::copy(more, mark, result.digits.begin() + 1) -
                                          result.digits.begin());
  const char* exponent = mark + 1;
  if (*exponent == '+') ++exponent;
  std::from_chars(exponent, end.ptr, result.exponent);
  return result;
}

void roundUp(Scientific& number) noexcept {
  while (number.count > 1 && number.digits[number.count - 1] == '9') --number.count;
  if (number.digits[number.count - 1]++ != '9') return;
  number.digits[0] = '1';  // all were 9
  ++number.exponent;
}

// The fewest digits are much the fastest to get. Rounding them rounds the number, unless they end
// half way: then the number may be on either side. The least doubles have too few digits for that.
Scientific scientificOf(double magnitude, int precision) noexcept {
  const auto kept = static_cast<std::size_t>(precision);
  Scientific result = written(magnitude);
  const bool endsHalfWay = result.count == kept + 1 && result.digits[kept] == '5';
  if (endsHalfWay || !std::isnormal(magnitude)) {
    result = written(magnitude, precision - 1);
  } else if (result.count > kept) {
    result.count = kept;
    if (result.digits[kept] >= '5') roundUp(result);
  }
  dropTrailingZeros(result);
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
  } else {
    appendPlain(text, significant, decimals);
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
  NumberText text;
  if (shortest.negative && shortest.magnitude != 0) append(text, '-');
  appendPlain(text, digits, static_cast<int>(-shortest.exponent));
  return text;
}

}  // namespace quendal::automation
