#include "functions/json/writer.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <new>

#include "base/copy_characters.h"
#include "functions/json/characters.h"

namespace quendal {
namespace {

constexpr std::size_t kLongestEscape = 6;

// The letter after the backslash; 0 for a control character that has none. "/" needs no escape and
// deliberately gets none.
constexpr char16_t shortEscapeOf(char16_t special) noexcept {
  switch (special) {
    case u'\b':
      return u'b';
    case u'\f':
      return u'f';
    case u'\r':
      return u'r';
    case u'\n':
      return u'n';
    case u'\t':
      return u't';
    default:
      return special >= 0x20 ? special : u'\0';
  }
}

char16_t* writeEscape(char16_t* out, char16_t c) noexcept {
  *out++ = u'\\';
  if (const char16_t letter = shortEscapeOf(c); letter != u'\0') {
    *out++ = letter;
    return out;
  }
  constexpr std::u16string_view kDigits = u"0123456789ABCDEF";
  *out++ = u'u';
  *out++ = u'0';
  *out++ = u'0';
  *out++ = kDigits[c / 16];
  *out++ = kDigits[c % 16];
  return out;
}

constexpr std::size_t kLongestInteger = 20;

constexpr auto kPowersOfTen = [] {
  std::array<std::uint64_t, kLongestInteger> powers{1};
  for (std::size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * 10;
  return powers;
}();

constexpr auto kTwoDigits = [] {
  std::array<std::array<char16_t, 2>, 100> pairs{};
  for (std::size_t i = 0; i < pairs.size(); ++i)
    pairs[i] = {static_cast<char16_t>(u'0' + i / 10), static_cast<char16_t>(u'0' + i % 10)};
  return pairs;
}();

// 1 for 0.
std::size_t countDigits(std::uint64_t value) noexcept {
  // floor(log10(2^n)) for the highest bit: the number's own or one less.
  const auto least = static_cast<std::size_t>((std::bit_width(value | 1) - 1) * 1233 >> 12);
  return least + 1 + (value >= kPowersOfTen[least + 1] ? 1 : 0);
}

char16_t* writeInteger(char16_t* out, std::int64_t value) noexcept {
  auto rest = static_cast<std::uint64_t>(value);
  if (value < 0) {
    *out++ = u'-';
    rest = 0 - rest;
  }
  char16_t* const end = out + countDigits(rest);
  char16_t* at = end;
  for (; rest >= 10; rest /= 100) {
    at -= 2;
    std::memcpy(at, kTwoDigits[static_cast<std::size_t>(rest % 100)].data(), 2 * sizeof(char16_t));
  }
  if (at != out) *out = static_cast<char16_t>(u'0' + rest);
  return end;
}

}  // namespace

void JsonWriter::grow(std::size_t count) {
  constexpr std::size_t kFirst = 256;
  constexpr std::size_t kLongest = 0x7FFFFFFF / sizeof(char16_t);
  if (count > kLongest || length_ > kLongest - count) throw std::bad_alloc();
  const std::size_t wanted = std::max({kFirst, length_ + count, memory_.capacity() * 2});
  if (!memory_.resize(wanted)) throw std::bad_alloc();
}

Text JsonWriter::take() {
  Text text = Text::attach(memory_.take(length_));
  if (text.get() == nullptr) throw std::bad_alloc();
  length_ = 0;
  return text;
}

void JsonWriter::put(std::u16string_view characters) {
  copyCharacters(characters.data(), room(characters.size()), characters.size());
  length_ += characters.size();
}

void JsonWriter::putQuoted(std::u16string_view characters) {
  char16_t* out = room(characters.size() + 2);
  *out = u'"';
  copyCharacters(characters.data(), out + 1, characters.size());
  out[characters.size() + 1] = u'"';
  length_ += characters.size() + 2;
}

void JsonWriter::putKey(std::u16string_view characters, bool isFirst) {
  char16_t* out = room(characters.size() + 4);
  *out = u',';
  if (!isFirst) ++out;
  *out++ = u'"';
  copyCharacters(characters.data(), out, characters.size());
  out += characters.size();
  *out++ = u'"';
  *out++ = u':';
  wroteUpTo(out);
}

void JsonWriter::putText(std::u16string_view text) {
  const char16_t* at = text.data();
  const char16_t* const end = at + text.size();
  // For all that is left as it is, for one escape, and for a whole block where less is left.
  const auto roomForRest = [&] {
    return room(static_cast<std::size_t>(end - at) + kLongestEscape + kJsonBlock + 2);
  };
  char16_t* out = roomForRest();
  *out++ = u'"';
  while (true) {
    while (static_cast<std::size_t>(end - at) >= kJsonBlock) {
      const std::size_t plain = plainInJsonBlock(at);
      std::memcpy(out, at, kJsonBlock * sizeof(char16_t));
      at += plain;
      out += plain;
      if (plain != kJsonBlock) break;
    }
    while (at != end && !isSpecialInJson(*at)) *out++ = *at++;
    if (at == end) break;
    out = writeEscape(out, *at++);
    wroteUpTo(out);
    out = roomForRest();
  }
  *out++ = u'"';
  wroteUpTo(out);
}

void JsonWriter::putInteger(std::int64_t value) {
  wroteUpTo(writeInteger(room(kLongestInteger), value));
}

void JsonWriter::putNumber(double value) {
  // Whole numbers are written with all their digits while these are at most 15.
  constexpr double kLeastScientific = 1e15;
  if (std::fabs(value) < kLeastScientific) {
    const auto whole = static_cast<std::int64_t>(value);
    if (static_cast<double>(whole) == value) return putInteger(whole);
  }
  length_ += automation::writeRealText(value, room(automation::kLongestRealText));
}

void JsonWriter::putNumber(std::u16string_view ordinaryText) {
  char16_t* const out = room(ordinaryText.size());
  std::replace_copy(ordinaryText.begin(), ordinaryText.end(), out, u',', u'.');
  length_ += ordinaryText.size();
}

}  // namespace quendal
