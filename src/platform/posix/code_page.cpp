// Windows-1252: ASCII, Latin-1, and 0x80 to 0x9F by a table.
#include "platform/code_page.h"

#include <algorithm>
#include <array>

namespace quendal::platform {
namespace {

constexpr unsigned char kTableFirst = 0x80;

// The five bytes without a character (81, 8D, 8F, 90, 9D) stand for the control of that number.
constexpr std::array<char16_t, 32> kTable{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char toByte(char16_t unit) noexcept {
  if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF)) return static_cast<char>(unit);
  const auto* const found = std::find(kTable.begin(), kTable.end(), unit);
  return found != kTable.end() ? static_cast<char>(kTableFirst + (found - kTable.begin())) : '?';
}

char16_t fromByte(char byte) noexcept {
  const auto value = static_cast<unsigned char>(byte);
  const auto index = static_cast<unsigned char>(value - kTableFirst);  // below 0x80 wraps high
  return index < kTable.size() ? kTable[index] : value;
}

}  // namespace

std::string toCodePage(std::u16string_view text) {
  std::string bytes(text.size(), '\0');
  std::transform(text.begin(), text.end(), bytes.begin(), toByte);
  return bytes;
}

std::string toSystemBytes(std::u16string_view text) { return toCodePage(text); }

std::u16string fromCodePage(std::string_view bytes) {
  std::u16string text(bytes.size(), u'\0');
  std::transform(bytes.begin(), bytes.end(), text.begin(), fromByte);
  return text;
}

}  // namespace quendal::platform
