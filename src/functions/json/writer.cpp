#include "functions/json/writer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <new>
#include <string>

#include "base/characters.h"
#include "base/text.h"
#include "functions/json/characters.h"

namespace quendal::json {
namespace {

// What stands behind the backslash. "/" needs no escape and deliberately gets none.
std::u16string escapeOf(char16_t special) {
  switch (special) {
    case u'\b':
      return u"b";
    case u'\f':
      return u"f";
    case u'\r':
      return u"r";
    case u'\n':
      return u"n";
    case u'\t':
      return u"t";
    case u'"':
    case u'\\':
      return {special};
    default:
      return u"u" + hexText(special, 4);
  }
}

}  // namespace

void Writer::grow(std::size_t count) {
  constexpr std::size_t kFirst = 256;
  constexpr std::size_t kLongest = 0x7FFFFFFF / sizeof(char16_t);
  if (count > kLongest - length_) throw std::bad_alloc();
  if (!memory_.resize(std::max({kFirst, length_ + count, memory_.capacity() * 2})))
    throw std::bad_alloc();
}

Text Writer::take() {
  Text text = Text::attach(memory_.take(length_));
  if (text.get() == nullptr) throw std::bad_alloc();
  length_ = 0;
  return text;
}

void Writer::put(std::u16string_view characters) {
  length_ += characters.copy(room(characters.size()), characters.size());
}

void Writer::putQuoted(std::u16string_view characters) {
  put(u'"');
  put(characters);
  put(u'"');
}

void Writer::putKey(std::u16string_view characters, bool isFirst) {
  char16_t* out = room(characters.size() + 4);
  length_ += characters.size() + (isFirst ? 3 : 4);
  if (!isFirst) *out++ = u',';
  *out++ = u'"';
  out += characters.copy(out, characters.size());
  *out++ = u'"';
  *out = u':';
}

void Writer::putText(std::u16string_view text) {
  put(u'"');
  const char16_t* const end = text.data() + text.size();
  for (const char16_t* at = text.data();; ++at) {
    const char16_t* const special = findFirst(at, end, isSpecial);
    put({at, special});
    if (special == end) break;
    put(u'\\');
    put(escapeOf(*special));
    at = special;
  }
  put(u'"');
}

void Writer::putInteger(std::int64_t value) {
  std::array<char, 20> digits;  // of any 64 bits
  const auto written = std::to_chars(digits.begin(), digits.end(), value);
  char16_t* const out = room(digits.size());
  length_ += static_cast<std::size_t>(std::copy(digits.begin(), written.ptr, out) - out);
}

void Writer::putNumber(double value) {
  // Whole numbers are written with all their digits while these are at most 15.
  constexpr double kLeastScientific = 1e15;
  if (std::fabs(value) < kLeastScientific) {
    const auto whole = static_cast<std::int64_t>(value);
    if (static_cast<double>(whole) == value) return putInteger(whole);
  }
  length_ += automation::writeRealText(value, room(automation::kLongestRealText));
}

void Writer::putNumber(std::u16string_view ordinaryText) {
  for (const char16_t c : ordinaryText) put(c == u',' ? u'.' : c);
}

}  // namespace quendal::json
