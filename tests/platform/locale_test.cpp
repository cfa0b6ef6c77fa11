#include "platform/locale.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "platform/code_page.h"

namespace quendal::platform {
namespace {

bool isAmericanEnglish() {
  return localeText(0x1001) == u"English" && localeText(0x1002) == u"United States";
}

TEST(Locale, TextsOfAmericanEnglish) {
  if (!isAmericanEnglish()) GTEST_SKIP() << "the user's locale is not English (United States)";
  const std::pair<std::uint32_t, const char*> kCases[] = {{0x0E, "."},
                                                          {0x0F, ","},
                                                          {0x10, "3;0"},
                                                          {0x11, "2"},
                                                          {0x12, "1"},
                                                          {0x14, "$"},
                                                          {0x1D, "/"},
                                                          {0x1E, ":"},
                                                          {0x1F, "M/d/yyyy"},
                                                          {0x20, "dddd, MMMM d, yyyy"},
                                                          {0x28, "AM"},
                                                          {0x29, "PM"},
                                                          {0x2A, "Monday"},
                                                          {0x30, "Sunday"},
                                                          {0x31, "Mon"},
                                                          {0x37, "Sun"},
                                                          {0x38, "January"},
                                                          {0x43, "December"},
                                                          {0x44, "Jan"},
                                                          {0x4F, "Dec"},
                                                          {0x50, ""},
                                                          {0x51, "-"},
                                                          {0x52, "3"},
                                                          {0x53, "0"},
                                                          {0x1003, "h:mm:ss tt"},
                                                          {0x0FFF, ""}};
  for (const auto& [item, text] : kCases) {
    EXPECT_EQ(toUtf8(localeText(item)), text) << std::hex << item;
  }
}

double at(int day, int hour, int minute, int second) {
  const double time = (hour * 3600 + minute * 60 + second) / 86400.0;
  return day < 0 ? day - time : day + time;
}

TEST(Locale, FormatsDates) {
  if (!isAmericanEnglish()) GTEST_SKIP() << "the user's locale is not English (United States)";
  constexpr std::u16string_view kStamp = u"dd MMM yyyy HH:nn:ss";
  const struct {
    double date;
    std::u16string_view pattern;
    const char* text;
  } kCases[] = {
      {at(46341, 23, 34, 35), kStamp, "15 Nov 2026 23:34:35"},
      {at(46341, 23, 34, 35), u"yyyy_MMM_dd HH_nn_ss", "2026_Nov_15 23_34_35"},
      {46341.5, u"d MM yyy H n s", "d MM yyy H n s"},  // not elements of ours
      {46341, u"ddMMMyyyyHHnnss:", "15Nov2026000000:"},
      {at(36585, 0, 0, 1), kStamp, "29 Feb 2000 00:00:01"},
      {61, kStamp, "01 Mar 1900 00:00:00"},
      {0.75, kStamp, "30 Dec 1899 18:00:00"},
      {at(-1, 6, 0, 0), kStamp, "29 Dec 1899 06:00:00"},  // the time counts forward
      {46341 + 0.4 / 86400, kStamp, "15 Nov 2026 00:00:00"},
      {46342 - 0.4 / 86400, kStamp, "16 Nov 2026 00:00:00"},
      {at(2958465, 23, 59, 59), kStamp, "31 Dec 9999 23:59:59"},
      {-657434, kStamp, "01 Jan 0100 00:00:00"},
      {2958466, kStamp, ""},
      {2958466 - 1e-8, kStamp, ""},  // rounds into the year 10000
      {-657435, kStamp, ""},
      {1e300, kStamp, ""},
      {std::numeric_limits<double>::infinity(), kStamp, ""},
      {std::nan(""), kStamp, ""},
      {46341, u"", ""},
  };
  for (const auto& each : kCases) {
    EXPECT_EQ(toUtf8(formatDate(each.date, each.pattern)), each.text) << each.date;
  }
}

TEST(Locale, EverySecondOfADayFormatsAsItself) {
  for (int second = 0; second < 86400; ++second) {
    const std::u16string text = formatDate(46341 + second / 86400.0, u"HHnnss");
    const int read = std::stoi(toUtf8(text));
    ASSERT_EQ(read / 10000 * 3600 + read / 100 % 100 * 60 + read % 100, second);
  }
}

TEST(Locale, ChangesCaseUnitByUnit) {
  const struct {
    std::u16string_view lower;
    std::u16string_view upper;
  } kPairs[] = {{u"azAZ09 [`{@", u"AZAZ09 [`{@"},
                {u"école straße", u"ÉCOLE STRAßE"},
                {u"żółw", u"ŻÓŁW"},
                {u"привет", u"ПРИВЕТ"},
                {u"αβγ", u"ΑΒΓ"},
                {u"日本😀", u"日本😀"},
                {u"", u""}};
  for (const auto& [lower, upper] : kPairs) {
    EXPECT_EQ(toUtf8(upperCase(lower)), toUtf8(upper));
    EXPECT_EQ(upperCase(upper), upper);
    EXPECT_EQ(toUtf8(lowerCase(upper)), toUtf8(lowerCase(lower)));
  }
  const std::u16string loose{u'é', 0xD800, u'é', 0xDC00};  // unpaired surrogates stay
  EXPECT_EQ(upperCase(loose), (std::u16string{u'É', 0xD800, u'É', 0xDC00}));
}

TEST(Locale, ComparesWithoutCase) {
  const struct {
    std::u16string_view a;
    std::u16string_view b;
    int order;
  } kCases[] = {{u"", u"", 0},           {u"Installed", u"INSTALLED", 0},
                {u"École", u"éCOLE", 0}, {u"a", u"B", -1},
                {u"B", u"a", 1},         {u"", u"a", -1},
                {u"abc", u"ABCD", -1},   {u"ПРИВЕТ", u"привет", 0},
                {u"a1", u"A2", -1}};
  const auto sign = [](int value) { return (value > 0) - (value < 0); };
  for (const auto& [a, b, order] : kCases) {
    EXPECT_EQ(sign(compareTextNoCase(a, b)), order) << toUtf8(a) << " / " << toUtf8(b);
    EXPECT_EQ(sign(compareTextNoCase(b, a)), -order);
  }
}

}  // namespace
}  // namespace quendal::platform
