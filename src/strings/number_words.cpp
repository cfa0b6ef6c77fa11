#include "strings/number_words.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "base/text.h"

namespace quendal::strings {
namespace {

constexpr std::size_t kGroupSize = 3;

using Words = std::array<std::u16string_view, 10>;  // by digit; empty where there is none
constexpr Words kUnits{u"",     u"one", u"two",   u"three", u"four",
                       u"five", u"six", u"seven", u"eight", u"nine"};
constexpr Words kTens{u"",      u"",      u"twenty",  u"thirty", u"fourty",
                      u"fifty", u"sixty", u"seventy", u"eighty", u"ninety"};
constexpr Words kTeens{u"ten",     u"eleven",  u"twelve",    u"thirteen", u"fourteen",
                       u"fifteen", u"sixteen", u"seventeen", u"eighteen", u"nineteen"};
constexpr std::array<std::u16string_view, 5> kScales{u"", u" thousand", u" million", u" billion",
                                                     u" trillion"};

// The characters of a group as the host's text functions give them. A group may be short: then
// its second character is missing, and its last is its first or its second.
class Group {
 public:
  explicit Group(std::u16string_view text) noexcept : text_(text) {}

  [[nodiscard]] bool isZero() const noexcept { return text_ == u"000"; }
  [[nodiscard]] std::u16string_view first() const noexcept { return text_.substr(0, 1); }
  [[nodiscard]] std::u16string_view second() const noexcept {
    return text_.substr(text_.size() < 2 ? text_.size() : 1, 1);
  }
  [[nodiscard]] std::u16string_view last() const noexcept {
    return text_.substr(text_.empty() ? 0 : text_.size() - 1);
  }
  [[nodiscard]] bool endsInTeen() const noexcept {
    return text_.size() >= 2 && text_[text_.size() - 2] == u'1';
  }

 private:
  std::u16string_view text_;
};

std::u16string_view wordOf(std::u16string_view digit, const Words& words) noexcept {
  const bool isDigit = digit.size() == 1 && digit[0] >= u'0' && digit[0] <= u'9';
  return isDigit ? words[static_cast<std::size_t>(digit[0] - u'0')] : std::u16string_view();
}

// Where there is no word nothing is appended, neither the blank before it nor what follows it.
void append(std::u16string& words, std::u16string_view word, std::u16string_view after = u"") {
  if (!word.empty()) words.append(u" ").append(word).append(after);
}

// `takesAnd` says whether the tens and units of this group stand behind an "and".
std::u16string groupWords(const Group& group, bool takesAnd) {
  std::u16string words;
  if (group.isZero()) return words;
  const bool hasTens = group.second() != u"0";
  const bool isTeen = group.second() == u"1";
  const bool hasUnits = group.last() != u"0" && !isTeen;
  if (group.first() != u"0") append(words, wordOf(group.first(), kUnits), u" hundred");
  if (takesAnd && (hasTens || hasUnits)) words += u" and ";
  if (hasTens && !isTeen) append(words, wordOf(group.second(), kTens));
  if (isTeen && group.endsInTeen()) append(words, wordOf(group.last(), kTeens));
  if (hasUnits) append(words, wordOf(group.last(), kUnits));
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
    std::u16string words =
        groupWords(Group(text.substr(0, kGroupSize)), isRightmost && fullLength > 2);
    if (!words.empty()) total.insert(0, words.append(kScales[group]));
  }
  return std::u16string(trimBlanks(total));
}

}  // namespace quendal::strings
