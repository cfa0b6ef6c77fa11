#include "functions/json/writer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <new>

#include "automation/text_output.h"
#include "base/text.h"
#include "functions/json/characters.h"

namespace quendal::json {
namespace {

// What stands behind the backslash. "/" needs no escape and deliberately gets none.
std::u16string escapeOf(char16_t special) {
  constexpr std::u16string_view kDigits = u"0123456789ABCDEF";
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
      return {u'u', u'0', u'0', kDigits[special / 16], kDigits[special % 16]};
  }
}

}  // namespace

void Writer::putQuoted(std::u16string_view characters) {
  text_ += u'"';
  text_ += characters;
  text_ += u'"';
}

void Writer::putKey(std::u16string_view characters, bool isFirst) {
  if (!isFirst) text_ += u',';
  putQuoted(characters);
  text_ += u':';
}

void Writer::putText(std::u16string_view text) {
  text_ += u'"';
  while (true) {
    const auto special = std::find_if(text.begin(), text.end(), isSpecial);
    text_.append(text.begin(), special);
    if (special == text.end()) break;
    text_.append(u"\\").append(escapeOf(*special));
    text = {special + 1, text.end()};
  }
  text_ += u'"';
}

void Writer::putNumber(double value) {
  // Whole numbers are written with all their digits while these are at most 15.
  constexpr double kLeastScientific = 1e15;
  if (std::fabs(value) < kLeastScientific && std::trunc(value) == value)
    return put(decimalText(static_cast<std::int64_t>(value)));
  std::array<char16_t, automation::kLongestRealText> text;
  put({text.data(), automation::writeRealText(value, text.data())});
}

void Writer::putNumber(std::u16string_view ordinaryText) {
  std::ranges::replace_copy(ordinaryText, std::back_inserter(text_), u',', u'.');
}

Text Writer::text() const {
  constexpr std::size_t kLongest = 0x7FFFFFFF / sizeof(char16_t);
  if (text_.size() > kLongest) throw std::bad_alloc();
  return Text(text_);
}

}  // namespace quendal::json
