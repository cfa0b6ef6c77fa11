#include "base/utf8.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "base/characters.h"

namespace quendal {
namespace {

constexpr char16_t kReplacement = 0xFFFD;

// A low surrogate after a high one is always its pair, so one look back tells; without branches
// the compiler can count many units at once.
std::size_t encodedSize(std::u16string_view text) noexcept {
  std::size_t size = 0;
  char16_t previous = 0;
  for (const char16_t unit : text) {
    size += 1u + (unit >= 0x80) + (unit >= 0x800) -
            2u * (isLowSurrogate(unit) && isHighSurrogate(previous));
    previous = unit;
  }
  return size;
}

// The code point at `at`, which moves past it.
char32_t nextCodePoint(std::u16string_view text, std::size_t& at) noexcept {
  const char16_t unit = text[at++];
  if (isHighSurrogate(unit) && at < text.size() && isLowSurrogate(text[at])) {
    return 0x10000u + ((unit & 0x3FFu) << 10) + (text[at++] & 0x3FFu);
  }
  return isSurrogate(unit) ? kReplacement : unit;
}

char* encode(char32_t point, char* out) noexcept {
  const auto put = [&out](char32_t byte) { *out++ = static_cast<char>(byte); };
  if (point < 0x80) {
    put(point);
    return out;
  }
  if (point < 0x800) {
    put(0xC0 | point >> 6);
  } else {
    if (point < 0x10000) {
      put(0xE0 | point >> 12);
    } else {
      put(0xF0 | point >> 18);
      put(0x80 | (point >> 12 & 0x3F));
    }
    put(0x80 | (point >> 6 & 0x3F));
  }
  put(0x80 | (point & 0x3F));
  return out;
}

// One sequence whose first byte is 0x80 or more. A malformed one is passed as far as it could
// still have become a character, and gives one replacement.
char32_t decode(const unsigned char*& at, const unsigned char* end) noexcept {
  const unsigned char lead = *at++;
  int more = 0;
  char32_t point = 0;
  unsigned char low = 0x80;  // range of the second byte: no overlong forms, no surrogates
  unsigned char high = 0xBF;
  if (lead >= 0xC2 && lead <= 0xDF) {
    more = 1;
    point = lead & 0x1Fu;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    more = 2;
    point = lead & 0x0Fu;
    if (lead == 0xE0) low = 0xA0;
    if (lead == 0xED) high = 0x9F;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    more = 3;
    point = lead & 0x07u;
    if (lead == 0xF0) low = 0x90;
    if (lead == 0xF4) high = 0x8F;
  } else {
    return kReplacement;
  }
  for (; more > 0; --more) {
    if (at == end || *at < low || *at > high) return kReplacement;
    point = point << 6 | (*at++ & 0x3Fu);
    low = 0x80;
    high = 0xBF;
  }
  return point;
}

bool eightAscii(const unsigned char* at) noexcept {
  std::uint64_t block = 0;
  std::memcpy(&block, at, sizeof block);
  return (block & 0x8080808080808080u) == 0;
}

}  // namespace

std::string toUtf8(std::u16string_view text) {
  std::string bytes(encodedSize(text), '\0');
  char* out = bytes.data();
  if (bytes.size() == text.size()) {  // all ASCII
    std::transform(text.begin(), text.end(), out, [](char16_t c) { return static_cast<char>(c); });
    return bytes;
  }
  for (std::size_t at = 0; at < text.size();) out = encode(nextCodePoint(text, at), out);
  return bytes;
}

std::u16string fromUtf8(std::string_view bytes) {
  std::u16string text(bytes.size(), u'\0');  // no sequence has fewer bytes than units
  char16_t* out = text.data();
  const auto* at = reinterpret_cast<const unsigned char*>(bytes.data());
  const auto* const end = at + bytes.size();
  while (at != end) {
    if (end - at >= 8 && eightAscii(at)) {
      out = std::copy_n(at, 8, out);
      at += 8;
    } else if (*at < 0x80) {
      *out++ = *at++;
    } else if (const char32_t point = decode(at, end); point < 0x10000) {
      *out++ = static_cast<char16_t>(point);
    } else {
      *out++ = static_cast<char16_t>(0xD7C0 + (point >> 10));
      *out++ = static_cast<char16_t>(0xDC00 + (point & 0x3FF));
    }
  }
  text.resize(static_cast<std::size_t>(out - text.data()));
  return text;
}

}  // namespace quendal
