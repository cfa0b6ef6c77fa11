// Kinds of characters in JSON text, found several characters at a time.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace quendal {

/// Characters that fit into a 64-bit number, and one in each of its places.
inline constexpr std::size_t kJsonWord = 4;
inline constexpr std::uint64_t kEachInJsonWord = 0x0001'0001'0001'0001;

inline std::uint64_t loadJsonWord(const char16_t* at) noexcept {
  std::uint64_t word = 0;
  std::memcpy(&word, at, sizeof(word));
  return word;
}

/// Whether two texts of one length are the same.
inline bool isSameJson(const char16_t* a, const char16_t* b, std::size_t length) noexcept {
  if (length < kJsonWord) {
    for (std::size_t i = 0; i < length; ++i)
      if (a[i] != b[i]) return false;
    return true;
  }
  for (std::size_t i = 0; i + kJsonWord < length; i += kJsonWord)
    if (loadJsonWord(a + i) != loadJsonWord(b + i)) return false;
  const std::size_t last = length - kJsonWord;
  return loadJsonWord(a + last) == loadJsonWord(b + last);
}

constexpr bool isBlankInJson(char16_t c) noexcept {
  return c == u' ' || c == u'\n' || c == u'\r' || c == u'\t';
}

/// The first character from `at` on that is no blank, or `end`.
inline const char16_t* findNonBlankInJson(const char16_t* at, const char16_t* end) noexcept {
  while (at != end && isBlankInJson(*at)) {
    ++at;
    while (static_cast<std::size_t>(end - at) >= kJsonWord &&
           loadJsonWord(at) == kEachInJsonWord * u' ')
      at += kJsonWord;
  }
  return at;
}

/// A double quotation mark, a backslash or a control character.
constexpr bool isSpecialInJson(char16_t c) noexcept { return c < 0x20 || c == u'"' || c == u'\\'; }

/// Characters that are compared together.
inline constexpr std::size_t kJsonBlock = 8;

/// How many of the kJsonBlock characters at `at` stand before the first special one.
inline std::size_t plainInJsonBlock(const char16_t* at) noexcept {
  // The compiler's vectors, which it has for every processor.
  using Unit = std::uint16_t;
  using Block = Unit __attribute__((vector_size(kJsonBlock * sizeof(Unit))));
  constexpr Unit kFirstPlain = 0x20, kQuote = u'"', kBackslash = u'\\';
  Block block;
  std::memcpy(&block, at, sizeof(block));
  // All bits of each special character, none of the others.
  const auto specials = (block < kFirstPlain) | (block == kQuote) | (block == kBackslash);
  std::array<std::uint64_t, 2> halves;
  std::memcpy(halves.data(), &specials, sizeof(halves));
  const auto before = [](std::uint64_t half) {
    const bool isLittle = std::endian::native == std::endian::little;
    return static_cast<std::size_t>(isLittle ? std::countr_zero(half) : std::countl_zero(half)) /
           16;
  };
  return halves[0] != 0 ? before(halves[0]) : kJsonWord + before(halves[1]);
}

/// The first special character from `at` on, or `end`.
inline const char16_t* findSpecialInJson(const char16_t* at, const char16_t* end) noexcept {
  while (static_cast<std::size_t>(end - at) >= kJsonBlock) {
    const std::size_t plain = plainInJsonBlock(at);
    at += plain;
    if (plain != kJsonBlock) return at;
  }
  while (at != end && !isSpecialInJson(*at)) ++at;
  return at;
}

}  // namespace quendal
