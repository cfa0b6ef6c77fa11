// The texts of the locale, of code pages and of UTF-8.
#include <cmath>
#include <span>
#include <tuple>

#include "base/number_pattern.h"
#include "platform/code_page.h"
#include "platform/locale.h"
#include "platform/sort_key.h"
#include "tests/support/text_rows.h"

namespace quendal::platform {
namespace {

TEST(Locale, FormatsDatesOfAmericanEnglish) {
  if (localeText(0x1002) != u"United States")
    GTEST_SKIP() << "the user's locale is not English (United States)";
  std::u16string days;
  for (const std::uint32_t item : {0x28, 0x29, 0x2A, 0x30, 0x31, 0x37, 0xFFF})
    days += localeText(item) + u" ";
  EXPECT_EQ(toUtf8(days), "AM PM Monday Sunday Mon Sun  ");
  constexpr std::u16string_view kStamp = u"dd MMM yyyy HH:nn:ss";
  const std::tuple<double, std::u16string_view, const char*> kCases[] = {
      {46341 + 84875 / 86400.0, kStamp, "15 Nov 2026 23:34:35"},
      {46341.5, u"d MM yyy H n s", "d MM yyy H n s"},  // not elements of ours
      {-1.25, kStamp, "29 Dec 1899 06:00:00"},         // the time counts forward
      {46342 - 0.4 / 86400, kStamp, "16 Nov 2026 00:00:00"},
      {2958466 - 1e-8, kStamp, ""},  // rounds into the year 10000
      {HUGE_VAL, kStamp, ""},
      {std::nan(""), kStamp, ""},
  };
  for (const auto& [date, pattern, text] : kCases)
    EXPECT_EQ(toUtf8(formatDate(date, pattern)), text) << date;
}

// A locale with signs of its own and the grouping of the moment.
std::u16string_view grouping;
std::size_t ownLocale(std::uint32_t item, std::span<char16_t> out) {
  if (item == 0x10) return grouping.copy(out.data(), out.size());
  out[0] = item == 0x0E ? u',' : item == 0x0F ? u'.' : u'~';
  return 1;
}

TEST(Locale, FormatsNumbers) {
  const std::tuple<const char16_t*, double, int, const char*> kCases[] = {
      {u"3;0", 1234567.125, 2, "1.234.567,13"},  // a half goes away from zero
      {u"3;0", 1.005, 2, "1,01"},                // by its 15 digits, not by its bits
      {u"3;0", -1000.5, 0, "~1.001"},
      {u"3;0", 999.995, 2, "1.000,00"},
      {u"3;0", -0.004, 2, "0,00"},  // no sign before nothing
      {u"3;0", 1.5e-9, 3, "0,000"},
      {u"3;0", 12.5, -1, "13"},
      {u"3;0", 1234567890123456, 1, "1.234.567.890.123.460,0"},  // 15 digits count
      {u"3;2;0", 123456789, 0, "12.34.56.789"},
      {u"3;2", 1234567890, 0, "12345.67.890"},
      {u"3", 1234567, 0, "1234.567"},
      {u"3;0", HUGE_VAL, 2, ""},
  };
  for (const auto& [groups, value, decimals, text] : kCases) {
    grouping = groups;
    EXPECT_EQ(toUtf8(formatNumberPattern(value, decimals, ownLocale)), text);
  }
}

TEST(Locale, ChangesCaseUnitByUnit) {
  const std::u16string lower = u"az09 [`{@école straßeαβγ日本😀",
                       upper = u"AZ09 [`{@ÉCOLE STRAßEΑΒΓ日本😀";
  EXPECT_EQ(toUtf8(upperCase(lower)), toUtf8(upper));
  EXPECT_EQ(toUtf8(lowerCase(upper)), toUtf8(lower));
  const std::u16string loose{u'é', 0xD800, u'é', 0xDC00};  // unpaired surrogates stay
  EXPECT_EQ(upperCase(loose), (std::u16string{u'É', 0xD800, u'É', 0xDC00}));
}

TEST(Locale, SortKeysAreInTheOrderOfTheirTexts) {
  const auto keyOf = [](std::u16string_view text) {
    std::u16string key = u"before";
    appendSortKey(text, key);
    return key;
  };
  // Both homes agree on this order.
  std::u16string previous;
  test::forEachText(u"|10|9|a|a1|Ab|abcdefghij|abcdefghijk|ae|b|ba|eb|z|\u042F|\u4E2D",
                    [&](std::u16string_view text) {
                      const std::u16string key = keyOf(text);
                      EXPECT_TRUE(previous < key && key.starts_with(u"before"));
                      EXPECT_EQ(key, keyOf(upperCase(text)));
                      previous = key;
                    });
}

TEST(CodePage, OneByteForEachUnit) {
  if (fromCodePage("\x80\xE9") != u"€é") GTEST_SKIP() << "the system's code page is not 1252";
  std::string all;
  for (int i = 0; i < 256; ++i) all += static_cast<char>(i);
  const std::u16string text = fromCodePage(all);
  EXPECT_EQ(toCodePage(text), all);
  EXPECT_EQ(text.substr(0x80, 32), u"€\u0081‚ƒ„…†‡ˆ‰Š‹Œ\u008dŽ\u008f\u0090‘’“”•–—˜™š›œ\u009džŸ");
  EXPECT_EQ(toCodePage(std::u16string{u'é', u'日', 0xD800, u'é'}), "\xE9??\xE9");
  // More than the system takes at once, and a pair, which has two bytes.
  const std::u16string many(3u << 20, u'é');
  EXPECT_TRUE(toCodePage(many + u"😀é") == std::string(many.size(), '\xE9') + "??\xE9");
}

TEST(Utf8, TextComesBack) {
  const std::pair<std::u16string_view, std::string_view> kCases[] = {
      {u"\u007F\u0080\u07FF\u0800\uFFFF", "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF"},
      {u"\uD7FF\uE000", "\xED\x9F\xBF\xEE\x80\x80"},
      {u"\U00010000\U0010FFFF", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"},
      {u"eight by€ight", "eight by\xE2\x82\xACight"},
  };
  for (const auto& [text, bytes] : kCases) {
    EXPECT_EQ(toUtf8(text), bytes);
    EXPECT_EQ(fromUtf8(bytes), text);
  }
  const std::u16string loose{u'a', 0xD800, 0xD83D, 0xDE00, 0xDE00, u'é', 0xD800};
  EXPECT_EQ(fromUtf8(toUtf8(loose)), u"a\uFFFD😀\uFFFDé\uFFFD");
}

TEST(Utf8, MalformedBytesBecomeReplacements) {
  const std::pair<std::string_view, const char16_t*> kCases[] = {
      {"a\xC0\x80z", u"a\uFFFD\uFFFDz"},                  // overlong
      {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},            // a surrogate
      {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},  // beyond the last character
      {"\xF5\xFF", u"\uFFFD\uFFFD"},
      {"\xE2\x82", u"\uFFFD"},  // cut at the end: one, for the longest start
      {"\xF0\x9F\x98\xC3\xA9", u"\uFFFDé"},
  };
  for (const auto& [bytes, text] : kCases) EXPECT_EQ(toUtf8(fromUtf8(bytes)), toUtf8(text));
}

}  // namespace
}  // namespace quendal::platform
