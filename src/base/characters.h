// What kind of character a UTF-16 unit or a byte is. Everything here knows ASCII alone.
#pragma once

namespace quendal {

template <typename Unit>
[[nodiscard]] constexpr bool isAscii(Unit c) noexcept {
  return c >= 0 && c < 0x80;
}

template <typename Unit>
[[nodiscard]] constexpr bool isDigit(Unit c) noexcept {
  return c >= '0' && c <= '9';
}

/// A character with A to Z in lower case; all others as they are. An object, so that algorithms
/// take it too.
inline constexpr auto asciiLower = []<typename Unit>(Unit c) noexcept {
  return c >= 'A' && c <= 'Z' ? static_cast<Unit>(c + ('a' - 'A')) : c;
};

template <typename Unit>
[[nodiscard]] constexpr bool isLetter(Unit c) noexcept {
  return asciiLower(c) >= 'a' && asciiLower(c) <= 'z';
}

/// A blank, or one of the controls from tab to carriage return.
template <typename Unit>
[[nodiscard]] constexpr bool isSpace(Unit c) noexcept {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

/// The value of a hexadecimal digit in either case; -1 for anything else.
template <typename Unit>
[[nodiscard]] constexpr int hexValue(Unit c) noexcept {
  if (isDigit(c)) return c - '0';
  const auto lower = asciiLower(c);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

[[nodiscard]] constexpr bool isHighSurrogate(char16_t unit) noexcept {
  return (unit & 0xFC00) == 0xD800;
}
[[nodiscard]] constexpr bool isLowSurrogate(char16_t unit) noexcept {
  return (unit & 0xFC00) == 0xDC00;
}
[[nodiscard]] constexpr bool isSurrogate(char16_t unit) noexcept {
  return (unit & 0xF800) == 0xD800;
}

}  // namespace quendal
