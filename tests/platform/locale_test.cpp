#include "platform/locale.h"

#include <cmath>
#include <limits>
#include <span>

#include "base/number_pattern.h"
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
  const struct {
    double date;
    std::u16string_view pattern;
    const char* text;
  } kCases[] = {
      {46341 + 84875 / 86400.0, kStamp, "15 Nov 2026 23:34:35"},
      {46341.5, u"d MM yyy H n s", "d MM yyy H n s"},  // not elements of ours
      {-1.25, kStamp, "29 Dec 1899 06:00:00"},         // the time counts forward
      {46342 - 0.4 / 86400, kStamp, "16 Nov 2026 00:00:00"},
      {2958466 - 1e-8, kStamp, ""},  // rounds into the year 10000
      {std::numeric_limits<double>::infinity(), kStamp, ""},
      {std::nan(""), kStamp, ""},
  };
  for (const auto& each : kCases)
    EXPECT_EQ(toUtf8(formatDate(each.date, each.pattern)), each.text) << each.date;
}

TEST(Locale, EverySecondOfADayFormatsAsItself) {
  for (int second = 0; second < 86400; ++second) {
    const int read = std::stoi(toUtf8(formatDate(46341 + second / 86400.0, u"HHnnss")));
    ASSERT_EQ(read / 10000 * 3600 + read / 100 % 100 * 60 + read % 100, second);
  }
}

// A locale with signs of its own and the grouping of the moment.
std::u16string_view grouping;
std::size_t ownLocale(std::uint32_t item, std::span<char16_t> out) {
  if (item == 0x10) return grouping.copy(out.data(), out.size());
  out[0] = item == 0x0E ? u',' : item == 0x0F ? u'.' : u'~';
  return 1;
}

TEST(Locale, FormatsNumbers) {
  const struct {
    const char16_t* grouping;
    double value;
    int decimals;
    const char* text;
  } kCases[] = {
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
      {u"0", 1234567, 0, "1234567"},
      {u"3;0", std::numeric_limits<double>::infinity(), 2, ""},
  };
  for (const auto& each : kCases) {
    grouping = each.grouping;
    EXPECT_EQ(toUtf8(formatNumberPattern(each.value, each.decimals, ownLocale)), each.text);
  }
}

TEST(Locale, ChangesCaseUnitByUnit) {
  test::forEachPair(u"az09 [`{@=AZ09 [`{@|école straße=ÉCOLE STRAßE|αβγ=ΑΒΓ|日本😀=日本😀",
                    [](std::u16string_view lower, const std::string& upper) {
                      EXPECT_EQ(toUtf8(upperCase(lower)), upper);
                      EXPECT_EQ(lowerCase(fromUtf8(upper)), lower);
                    });
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

}  // namespace
}  // namespace quendal::platform
