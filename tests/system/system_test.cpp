// System queries, the platform block and `ClsOSInfo`.
#include <gtest/gtest.h>

#include "core/apartment.h"
#include "core/dispatch.h"
#include "core/text_tools.h"
#include "platform/code_page.h"
#include "system/os_info.h"
#include "system/platform_block.h"
#include "system/queries.h"

namespace quendal {
namespace {

using platform::toUtf8;

TEST(SystemQueries, UpTimeIsRoundedNotCut) {
  const struct {
    std::int32_t ticks;
    const char16_t* text;
  } rows[] = {{0, u"0 Seconds"},
              {500, u"0 Seconds"},
              {1'500, u"2 Seconds"},
              {59'499, u"59 Seconds"},
              {59'500, u"1 Minutes 0 Seconds"},
              {90'000, u"2 Minutes 30 Seconds"},
              {119'000, u"2 Minutes 59 Seconds"},
              {150'000, u"2 Minutes 30 Seconds"},
              {3'600'000, u"1 Hours 0 Minutes 0 Seconds"},
              {86'400'000, u"1 Days 0 Hours 0 Minutes 0 Seconds"},
              {129'600'000, u"2 Days 12 Hours 0 Minutes 0 Seconds"},
              {-1'500, u"-2 Seconds"},
              {-2'147'483'647 - 1, u"-2147484 Seconds"}};
  for (const auto& row : rows) EXPECT_EQ(system::upTimeText(row.ticks), row.text) << row.ticks;
}

TEST(SystemQueries, TheSystemsNameIsNeverToldButItsRecordIsFilled) {
  apartment().osVersion = {};
  EXPECT_EQ(system::queryOSName(), u"Unknown");
  EXPECT_GT(apartment().osVersion.major, 0);
  EXPECT_FALSE(apartment().osVersion.productName.empty());
  EXPECT_EQ(system::queryBitText(), u"32 Bit");
  EXPECT_NE(system::queryIsWow64(), Boolean::True);
  EXPECT_EQ(system::querySpecialFolder(9999), u"");
}

TEST(PlatformBlock, RowsAreFilledToTheWidthAndNoFurther) {
  const std::u16string row = system::formatInfoRow(u"Machine Name", u"X", 0, 40);
  EXPECT_EQ(row, u"Machine Name " + std::u16string(28, u'.') + u" X");
  EXPECT_EQ(system::formatInfoRow(u"ab", u"", 3, 2), u"   ab  ");
  EXPECT_THROW((void)system::formatInfoRow(u"abc", u"", 0, 2), AutomationError);
}

TEST(PlatformBlock, HasItsLinesInOrderAndTrimsTheServicePack) {
  static_cast<void>(system::queryOSName());
  apartment().osVersion.servicePack = u"  Service Pack 3" + std::u16string(1, u'\0') + u"junk ";
  const std::u16string block = system::platformInfoBlock();
  std::vector<std::u16string> lines(1);
  for (std::size_t i = 0; i < block.size(); ++i) {
    if (block.compare(i, 2, u"\r\n") == 0) {
      lines.emplace_back();
      ++i;
    } else {
      lines.back() += block[i];
    }
  }
  ASSERT_EQ(lines.size(), 19u);
  const std::u16string rule(80, u'*');
  EXPECT_EQ(lines[0], rule);
  EXPECT_EQ(lines[2], u"*** Platform Information ***");
  EXPECT_EQ(lines[17], rule);
  for (const std::size_t empty : {1, 3, 16, 18}) EXPECT_EQ(lines[empty], u"");
  const char16_t* const labels[] = {u"Machine Name ",
                                    u"Operating System ",
                                    u"Operating System Bit ",
                                    u"Operating System Major Version ",
                                    u"Operating System Minor Version ",
                                    u"Operating System Build Level ",
                                    u"Operating System Platform ",
                                    u"Service Pack Identifier ",
                                    u"Microsoft IIS Version ",
                                    u"Quendal Classic ASP Version ",
                                    u"Network IP Address ",
                                    u".NET Framework Version "};
  for (std::size_t i = 0; i < std::size(labels); ++i) {
    EXPECT_TRUE(lines[4 + i].starts_with(std::u16string(labels[i]) + u"."));
    EXPECT_EQ(lines[4 + i].find(u". "), 40u);  // the value begins in column 43
  }
  EXPECT_EQ(lines[11].substr(42), u"Service Pack 3");
  EXPECT_EQ(apartment().osVersion.servicePack.size(), 128u);

  const std::u16string banner = system::platformBanner();
  EXPECT_TRUE(banner.starts_with(rule + u"\r\n\r\nTolvex Reports Classic ASP Library\r\n\r\n"));
  EXPECT_TRUE(banner.ends_with(rule + u"\r\n\r\n"));
  EXPECT_EQ(banner.find(u"  "), block.find(u"  ") == block.npos
                                    ? banner.npos
                                    : banner.size() - block.size() - 2 + block.find(u"  "));
}

TEST(OsInfoTest, AnswersByName) {
  const Object info = Owned<OsInfo>::make().object();
  for (const char16_t* list : {u"MonthNamesShort", u"MonthNamesLong"}) {
    const Object months = Object::from(info.get(list));
    EXPECT_EQ(months.get(u"Count").lVal, 12);
    EXPECT_TRUE(textOf(months.get(u"Item", std::int16_t{12})).starts_with(u"De"));
  }
  for (const char16_t* list : {u"DayLongNames", u"DayShortNames"}) {
    try {
      info.get(list);
      ADD_FAILURE() << "no error";
    } catch (const AutomationError& error) {
      EXPECT_EQ(error.number(), 457);
      EXPECT_EQ(error.description(),
                u"This key is already associated with an element of this collection");
    }
  }
  EXPECT_EQ(textOf(info.get(u"DateFormatShort")), textOf(info.get(u"ShortDateFormat")));
  EXPECT_EQ(textOf(info.get(u"SystemDir")).back(), u'\0');
  EXPECT_EQ(textOf(info.get(u"SystemDirectory")).back(), u'\\');
  EXPECT_EQ(textOf(info.get(u"BitAsString")), u"32 Bit");
  EXPECT_EQ(info.get(u"TickCount").vt, VT_I4);
}

}  // namespace
}  // namespace quendal
