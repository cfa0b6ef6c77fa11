#include "strings/number_words.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "base/text.h"

namespace quendal::strings {
namespace {

constexpr std::size_t kGroupSize = 3;

using Words = std::array<std::u16string_view, 10>;  // by digit; empty where nothing is said
constexpr Words kUnits{u"",     u"one", u"two",   u"three", u"four",
                       u"five", u"six", u"seven", u"eight", u"nine"};
constexpr Words kTens{u"",      u"",      u"twenty",  u"thirty", u"fourty",
                      u"fifty", u"sixty", u"seventy", u"eighty", u"ninety"};
constexpr Words kTeens{u"ten",     u"eleven",  u"twelve",    u"thirteen", u"fourteen",
                       u"fifteen", u"sixteen", u"seventeen", u"eighteen", u"nineteen"};
constexpr std::array<std::u16string_view, 5> kScales{u"", u" thousand", u" million", u" billion",
                                                     u" trillion"};

std::u16string_view wordOf(char16_t digit, const Words& words) noexcept {
  return isDigit(digit) ? words[static_cast<std::size_t>(digit - u'0')] : std::u16string_view();
}

void append(std::u16string& words, std::u16string_view word, std::u16string_view after = u"") {
  if (!word.empty()) words.append(u" ").append(word).append(after);
}

// The words of a group, which has three characters or, at the right end of a number with a
// fraction, fewer. Its first character counts hundreds, its second tens and its last units, even
// where one character is two of these; one that is missing counts as no digit, and not as "0".
// `takesAnd` says whether tens and units stand behind an "and".
std::u16string groupWords(std::u16string_view group, bool takesAnd) {
  constexpr char16_t kMissing = u'\0';
  std::u16string words;
  if (group == u"000") return words;
  const char16_t first = group.empty() ? kMissing : group.front();
  const char16_t second = group.size() < 2 ? kMissing : group[1];
  const char16_t last = group.empty() ? kMissing : group.back();
  const bool isTeen = second == u'1';

  append(words, wordOf(first, kUnits), u" hundred");
  if (takesAnd && (second != u'0' || last != u'0')) words += u" and ";
  append(words, wordOf(second, kTens));
  if (!isTeen) append(words, wordOf(last, kUnits));
  if (isTeen && group[group.size() - 2] == u'1') append(words, wordOf(last, kTeens));
  return words;
}

}  // namespace

std::u16string spellable(std::u16string_view number) {
  return std::u16string(trimBlanks(replaceAll(number, u",", u"")));
}

std::u16string spell(std::u16string_view number) {
  const std::size_t fullLength = number.size();
  std::u16string digits(number.substr(0, number.find(u'.')));
  // Measured before the fraction was cut off, unless zeros are put in front.
  std::size_t length = fullLength;
  while (length % kGroupSize != 0) {
    digits.insert(0, 1, u'0');
    length = digits.size();
  }

  std::u16string total;
  for (std::size_t group = 0; group < kScales.size() && length >= kGroupSize; ++group) {
    length -= kGroupSize;
    const auto text = std::u16string_view(digits).substr(std::min(length, digits.size()));
    const bool isRightmost = group == 0;
    std::u16string words = groupWords(text.substr(0, kGroupSize), isRightmost && fullLength > 2);
    if (!words.empty()) total.insert(0, words.append(kScales[group]));
  }
  return std::u16string(trimBlanks(total));
}

}  // namespace quendal::strings
