#include "base/text.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace quendal {
namespace {

constexpr bool sameNoCase(char16_t a, char16_t b) noexcept {
  return asciiLower(a) == asciiLower(b);
}

}  // namespace

bool equalNoCase(std::u16string_view a, std::u16string_view b) noexcept {
  return std::ranges::equal(a, b, sameNoCase);
}

bool containsNoCase(std::u16string_view text, std::u16string_view part) noexcept {
  return part.empty() ||
         std::search(text.begin(), text.end(), part.begin(), part.end(), sameNoCase) != text.end();
}

std::u16string decimalText(std::int64_t value, std::size_t digits) {
  std::array<char, 24> buffer;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
  std::u16string text(buffer.data(), end);
  const std::size_t sign = value < 0 ? 1 : 0;
  if (text.size() < sign + digits) text.insert(sign, sign + digits - text.size(), u'0');
  return text;
}

std::u16string hexText(std::uint64_t value, std::size_t digits) {
  std::u16string text(digits, u'0');
  for (; digits > 0; value >>= 4) text[--digits] = kHexDigits[value & 0xF];
  return text;
}

std::u16string replaceAll(std::u16string_view text, std::u16string_view what,
                          std::u16string_view by) {
  std::u16string result;
  std::size_t start = 0;
  while (!what.empty()) {
    const std::size_t found = text.find(what, start);
    if (found == std::u16string_view::npos) break;
    result.append(text, start, found - start).append(by);
    start = found + what.size();
  }
  return result.append(text, start);
}

std::u16string_view trimBlanks(std::u16string_view text) noexcept {
  const std::size_t first = text.find_first_not_of(u' ');
  if (first == std::u16string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(u' ') - first + 1);
}

}  // namespace quendal
