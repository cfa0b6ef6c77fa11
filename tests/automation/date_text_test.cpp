// Date texts on which both homes agree.
#include "automation/date_text.h"

#include "base/date.h"
#include "platform/clock.h"
#include "platform/locale.h"
#include "tests/support/text_rows.h"

namespace quendal::platform {
namespace {

TEST(DateText, IsReadAsBothHomesDo) {
  if (!localeText(0x1F).starts_with(u"M/d/"))
    GTEST_SKIP() << "the locale's dates are not month/day/year";
  const int thisYear = momentOf(localNow())->year;
  const double march5 = dateSerial(2005, 3, 5, 0, 0, 0);
  const std::pair<double, std::u16string_view> rows[] = {
      {march5,
       u"2005-3-5|2005/03/05|3/5/2005|3/5/05|3-5-2005|3 / 5 / 2005|  3/5/2005  |MARCH 5, 2005"
       u"|Mar 5 2005|5 March 2005|5-mar-05|5/Mar/2005|2005 March 5|2005 5 March|2005-Mar-05"
       u"|March, 5, 2005|Sat, 5 Mar 2005|Monday, March 5, 2005|3/5/2005 12:00:00 AM"},
      {march5 + 14.5 / 24,
       u"2005-03-05 14:30|3/5/2005 2:30PM|March 5, 2005, 2:30:00 pm|2:30 PM 3/5/2005"
       u"|14:30 3/5/2005|3/5/2005\t14:30|14:30 5 March 2005"},
      {14.5 / 24, u"14:30|2:30PM|14:30 PM"},
      {0, u"0:00|12 AM|12/30/1899"},
      {86399 / 86400.0, u"23:59:59|11:59:59 PM"},
      {0.5, u"12:00|12PM"},
      {dateSerial(2005, 5, 13, 0, 0, 0), u"5/13/2005|13/5/2005|2005/13/5"},
      {dateSerial(2013, 5, 12, 0, 0, 0), u"13/5/12"},
      {dateSerial(2013, 12, 31, 0, 0, 0), u"13/31/12|13/12/31"},
      {dateSerial(2029, 2, 13, 0, 0, 0), u"13/2/29"},  // 2013 was no leap year
      {dateSerial(2005, 3, 1, 0, 0, 0), u"March 2005|3/2005|2005-03"},
      {dateSerial(2049, 3, 1, 0, 0, 0), u"3/2049|2049-03"},
      {dateSerial(thisYear, 3, 5, 0, 0, 0), u"3/5|March 5|5 March"},
      {dateSerial(1975, 3, 5, 0, 0, 0), u"3/5/75|5 Mar 75"},
      {-1.25, u"12/29/1899 6:00"},
      {-657434, u"1/1/100"},
      {2958465, u"12/31/9999"},
  };
  for (const auto& [expected, texts] : rows)
    test::forEachText(texts, [expected = expected](std::u16string_view text) {
      double date = 0.125;
      EXPECT_TRUE(automation::parseDate(text, date));
      EXPECT_NEAR(date, expected, 1e-9);
    });
  double date = 0;
  test::forEachText(
      u"| |abc|5|-5|45000|20050305|Monday|March|Sept 5, 2005|March 5th, 2005|2/29/2005"
      u"|31 April 2005|March 32, "
      u"2005|13/13/2005|31/31|0/5/2005|1/1/10000|3/5/|/3/5|3//5/2005|3/5/2005x|3/5/2005,"
      u"|3.5.2005|March March 5 2005|5 March 2005 6|24:00|14:60|14:30:60|2:30:|:30|1:2:3:4"
      u"|14:30:09.5|2:30 PM PM|2:30 a.m.|2:30 AM 3/5/2005 4:00|2005-03-05Z|2005/3/261",
      [&date](std::u16string_view text) { EXPECT_FALSE(automation::parseDate(text, date)); });
  EXPECT_FALSE(automation::parseDate({u"3/5/2005\0x", 10}, date));
  EXPECT_FALSE(automation::parseDate(std::u16string(100000, u'/'), date));
}

}  // namespace
}  // namespace quendal::platform
