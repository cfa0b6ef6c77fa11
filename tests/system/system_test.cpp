// System queries, `ClsOSInfo` and the platform block.
#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "base/text.h"
#include "core/apartment.h"
#include "core/dispatch.h"
#include "core/product.h"
#include "platform/clock.h"
#include "platform/folders.h"
#include "platform/identities.h"
#include "support/text_rows.h"
#include "system/os_info.h"
#include "system/platform_block.h"
#include "tests/automation/values.h"

namespace quendal {
namespace {

TEST(SystemQueries, UpTimeIsRoundedNotCut) {
  test::forEachPair(
      u"500=0 Seconds|1500=2 Seconds|59500=1 Minutes 0 Seconds|90000=2 Minutes 30 Seconds"
      u"|150000=2 Minutes 30 Seconds|3600000=1 Hours 0 Minutes 0 Seconds"
      u"|86400000=1 Days 0 Hours 0 Minutes 0 Seconds|129600000=2 Days 12 Hours 0 Minutes 0 Seconds"
      u"|-1500=-2 Seconds|-2147483648=-2147484 Seconds",
      [](std::u16string_view ticks, const std::string& text) {
        EXPECT_EQ(toUtf8(system::upTimeText(std::stoi(toUtf8(ticks)))), text);
      });
}

class OsInfoTest : public ::testing::Test {
 protected:
  std::string get(std::u16string_view property) { return toUtf8(textOf(info.get(property))); }

  const Object info = Owned<OsInfo>::make().object();
};

TEST_F(OsInfoTest, TellsTheLocale) {
  if (get(u"Language") != "English" || get(u"Country") != "United States")
    GTEST_SKIP() << "the locale is not English (United States)";
  test::forEachPair(
      u"PositiveSignPosition=3|NegativeSign=-|PositiveSign=|"
      u"TimeFormat=h:mm:ss tt|DateFormatShort=M/d/yyyy|ShortDateFormat=M/d/yyyy|TimeSeparator=:|"
      u"DateSeparator=/|LeadingZerosForDecimal=1|NumberOfFractionalDigits=2|DigitGrouping=3;0|"
      u"ThousandSeparator=,|CurrencySymbol=$|LongDateFormat=dddd, MMMM d, yyyy|DecimalSeparator=.",
      [this](std::u16string_view property, const std::string& text) {
        EXPECT_EQ(get(property), text);
      });
  EXPECT_TRUE(get(u"NegativeSignPosition") == "0" || get(u"NegativeSignPosition") == "3");
  for (const std::u16string_view property : {u"MonthNamesShort", u"MonthNamesLong"}) {
    const Object list = Object::from(info.get(property));
    EXPECT_EQ(int32Of(list.get(u"Count")), 12);
    const bool isShort = property == u"MonthNamesShort";
    EXPECT_EQ(textOf(list.get(u"Item", std::int16_t{1})), isShort ? u"Jan" : u"January");
    EXPECT_EQ(textOf(list.get(u"Item", std::int16_t{12})), isShort ? u"Dec" : u"December");
  }
}

TEST_F(OsInfoTest, TellsTheSystem) {
  EXPECT_EQ(get(u"SystemDir"), toUtf8(platform::systemFolder()) + '\0');
  EXPECT_EQ(get(u"SystemDirectory"), toUtf8(platform::systemFolder()) + "\\");
  EXPECT_EQ(get(u"BitAsString"), "32 Bit");
  EXPECT_EQ(info.get(u"Bit").boolVal, platform::wow64Flag());
  // Where a system lacks a folder, its row shows nothing.
  test::forEachPair(
      u"MyDocumentsFolder=5|MyPicturesFolder=39|MyMusicFolder=13|MyVideosFolder=14"
      u"|CommonDocumentsFolder=46|CommonPicturesFolder=54|CommonMusicFolder=53"
      u"|CommonVideosFolder=55|StartMenuFolder=11|StartMenuProgramsFolder=2|StartupFolder=7"
      u"|CommonStartMenuFolder=22|CommonStartMenuProgramsFolder=23|CommonStartupFolder=24"
      u"|DesktopFolder=16|MyFavoritesFolder=6|RecentDocumentsFolder=8|SendToFolder=9"
      u"|TemplatesFolder=21|CommonDesktopFolder=25|CommonFavoritesFolder=31"
      u"|CommonTemplatesFolder=45|ApplicationDataFolder=26|LocalApplicationDataFolder=28"
      u"|CommonApplicationDataFolder=35|TemporaryInternetFilesFolder=32|IECookiesFolder=33"
      u"|IEHistoryFolder=34|WindowsDirectory=36|FontsFolder=20|ProgramFilesFolder=38"
      u"|CommonFilesFolder=43|UserProfileFolder=40|AdministrativeToolsFolder=48"
      u"|CommonAdministrativeToolsFolder=47",
      [this](std::u16string_view property, const std::string& id) {
        EXPECT_EQ(get(property), toUtf8(system::querySpecialFolder(std::stoi(id))));
      });
  const std::int32_t before = platform::tickCount();
  const Variant ticks = info.get(u"TickCount");
  EXPECT_EQ(ticks.vt, VT_I4);
  EXPECT_LT(static_cast<std::uint32_t>(ticks.lVal) - static_cast<std::uint32_t>(before), 60'000u);
  EXPECT_EQ(get(u"UpTime").substr(0, 8), toUtf8(system::upTimeText(ticks.lVal)).substr(0, 8));
  const std::string address = get(u"IPAddress");  // none where the machine's name has none
  EXPECT_EQ(std::ranges::count(address, '.'), address.empty() ? 0 : 3) << address;
  EXPECT_EQ(address.find_first_not_of("0123456789."), address.npos) << address;
  EXPECT_EQ(system::querySpecialFolder(9999), u"");
  apartment().errorNumber = 5;
  Owned<OsInfo> another = Owned<OsInfo>::make();
  EXPECT_EQ(pendingError(), 0);
  apartment().errorNumber = 5;
  another.reset();
  EXPECT_EQ(pendingError(), 0);
  for (const std::u16string_view property : {u"DayLongNames", u"DayShortNames"})
    EXPECT_EQ(test::raisedBy([&] { static_cast<void>(info.get(property)); }),
              error_number::kDuplicateKey);
}

TEST(PlatformBlock, TellsTheRecordInNineteenLines) {
  apartment().osVersion = {};
  system::recordOSVersion();
  const OSVersionState told = apartment().osVersion;
  const platform::OSVersion version = platform::osVersion();
  EXPECT_EQ(std::tie(told.major, told.minor, told.build, told.platformId),
            std::tie(version.major, version.minor, version.build, version.platformId));
  EXPECT_FALSE(told.productName.empty());
  apartment().osVersion = {
      u"Product", 6, 1, 7601, 2, u"  Service Pack 3" + std::u16string(1, u'\0') + u"junk "};
  std::u16string facts;
  for (const auto& [label, value] : system::platformFacts()) facts += label + u"=" + value + u"|";
  for (const std::u16string& expected :
       {u"Machine Name=" + platform::computerName() +
            u"|Operating System=Product|Operating System Bit=32 Bit"
            u"|Operating System Major Version=6|Operating System Minor Version=1"
            u"|Operating System Build Level=7601|Operating System Platform=2"
            u"|Service Pack Identifier=Service Pack 3|Microsoft IIS Version=",
        std::u16string(u"|Quendal Classic ASP Version=1.0.0|Network IP Address="),
        std::u16string(u"|.NET Framework Version=")})
    EXPECT_NE(facts.find(expected), facts.npos) << toUtf8(facts);

  const std::u16string rule(80, u'*');
  const std::u16string block = replaceAll(system::platformInfoBlock(), u"\r\n", u"\n");
  EXPECT_TRUE(block.starts_with(rule + u"\n\n*** Platform Information ***\n\nMachine Name ..."));
  EXPECT_NE(block.find(u"\nOperating System ........................ Product\n"), block.npos);
  EXPECT_TRUE(block.ends_with(u"\n\n" + rule + u"\n"));
  EXPECT_EQ(std::ranges::count(block, u'\n'), 18);
  const std::u16string banner = replaceAll(system::platformBanner(), u"\r\n", u"\n");
  EXPECT_TRUE(
      banner.starts_with(rule + u"\n\n" + std::u16string(product::kFileDescription) + u"\n\n"));
  EXPECT_TRUE(banner.ends_with(u"\n\n" + block + u"\n"));
}

}  // namespace
}  // namespace quendal
