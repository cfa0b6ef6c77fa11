// What kind of character a UTF-16 unit or a byte is. Everything here knows ASCII alone.
#pragma once

#include <algorithm>
#include <cstddef>

namespace quendal {

template <typename Unit>
[[nodiscard]] constexpr bool isAscii(Unit c) noexcept {
  return c >= 0 && c < 0x80;
}

template <typename Unit>
[[nodiscard]] constexpr bool isDigit(Unit c) noexcept {
  return c >= '0' && c <= '9';
}

/// A character with A to Z in lower case, or with a to z in upper case; all others as they are.
/// Objects, so that algorithms take them too.
inline constexpr auto asciiLower = []<typename Unit>(Unit c) noexcept {
  return c >= 'A' && c <= 'Z' ? static_cast<Unit>(c + ('a' - 'A')) : c;
};

inline constexpr auto asciiUpper = []<typename Unit>(Unit c) noexcept {
  return c >= 'a' && c <= 'z' ? static_cast<Unit>(c - ('a' - 'A')) : c;
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

/// The digits that hexValue reads, in upper case.
inline constexpr char16_t kHexDigits[] = u"0123456789ABCDEF";

[[nodiscard]] constexpr bool isHighSurrogate(char16_t unit) noexcept {
  return (unit & 0xFC00) == 0xD800;
}
[[nodiscard]] constexpr bool isLowSurrogate(char16_t unit) noexcept {
  return (unit & 0xFC00) == 0xDC00;
}
[[nodiscard]] constexpr bool isSurrogate(char16_t unit) noexcept {
  return (unit & 0xF800) == 0xD800;
}

/// Where the first unit stands for which a test holds; `end` when there is none. Long runs without
/// any are passed a block at a time: the loop over a block has no way out, and what it finds is as
/// wide as what it tests, so that compilers test many units at once.
template <typename Unit, class Test>
[[nodiscard]] constexpr const Unit* findFirst(const Unit* at, const Unit* end, Test isSought) {
  constexpr std::ptrdiff_t kBlock = 32;
  for (; end - at >= kBlock; at += kBlock) {
    Unit found = 0;
    for (std::ptrdiff_t i = 0; i < kBlock; ++i)
      if (isSought(at[i])) found = 1;
    if (found != 0) break;
  }
  return std::find_if(at, end, isSought);
}

}  // namespace quendal
