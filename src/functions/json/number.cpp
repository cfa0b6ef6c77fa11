#include "functions/json/number.h"

#include <quendal/error.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/characters.h"

namespace quendal::json {
namespace {

const char16_t* skipDigits(const char16_t* at, const char16_t* end) noexcept {
  return std::find_if_not(at, end, isDigit<char16_t>);
}

const char16_t* endOfNumber(const char16_t* at, const char16_t* end) noexcept {
  const auto hasDigit = [end](const char16_t* place) { return place != end && isDigit(*place); };
  if (*at == u'-') ++at;
  at = *at == u'0' ? at + 1 : skipDigits(at, end);
  if (at != end && *at == u'.' && hasDigit(at + 1)) at = skipDigits(at + 1, end);
  if (at != end && (*at == u'e' || *at == u'E')) {
    const char16_t* exponent = at + 1;
    if (exponent != end && (*exponent == u'-' || *exponent == u'+')) ++exponent;
    if (hasDigit(exponent)) at = skipDigits(exponent, end);
  }
  return at;
}

// Of a number that is out of a double's range, whether it is too great: whether the first digit
// that is not 0 stands before the point when the exponent has moved that.
bool isTooGreat(std::string_view number) noexcept {
  const std::size_t mark = std::min(number.find_first_of("eE"), number.size());
  const std::string_view digits = number.substr(0, mark);
  std::int32_t exponent = 0;
  if (mark != number.size()) {
    const char* first = number.data() + mark + 1;
    if (*first == '+') ++first;
    const auto read = std::from_chars(first, number.data() + number.size(), exponent);
    if (read.ec != std::errc()) return *first != '-';  // more than any text has digits
  }
  const auto point = static_cast<std::int64_t>(std::min(digits.find('.'), digits.size()));
  return static_cast<std::int64_t>(digits.find_first_of("123456789")) < point + exponent;
}

}  // namespace

Number readNumber(const char16_t* begin, const char16_t* end) {
  end = endOfNumber(begin, end);
  constexpr std::ptrdiff_t kExactDigits = 15;  // a double holds any so many
  if (end - begin <= kExactDigits && std::all_of(begin, end, isDigit<char16_t>)) {
    std::int64_t whole = 0;
    for (; begin != end; ++begin) whole = whole * 10 + (*begin - u'0');
    return {static_cast<double>(whole), end};
  }
  std::array<char, 64> usual;
  std::string longer;
  const auto size = static_cast<std::size_t>(end - begin);
  if (size > usual.size()) longer.resize(size);
  char* const copy = longer.empty() ? usual.data() : longer.data();
  std::transform(begin, end, copy, [](char16_t c) { return static_cast<char>(c); });  // ASCII
  const std::string_view text(copy, size);
  double value = text.front() == '-' ? -0.0 : 0.0;
  const auto read = std::from_chars(copy, copy + size, value);
  if (read.ec != std::errc() && isTooGreat(text)) throw AutomationError(error_number::kOverflow);
  return {value, end};
}

}  // namespace quendal::json
