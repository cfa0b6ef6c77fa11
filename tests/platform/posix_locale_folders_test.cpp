// Locales of the C library, and special folders of the user-directories configuration.
#include <gtest/gtest.h>
#include <locale.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <optional>

#include "base/utf8.h"
#include "platform/folders.h"
#include "platform/posix/date_picture.h"
#include "platform/posix/locale_table.h"
#include "tests/platform/temp_folder.h"
#include "tests/support/text_rows.h"

namespace quendal::platform {
namespace {

TEST(DatePicture, ConvertsFormats) {
  const StrftimeFormats kFormats{u"%d.%m.%Y", u"%T", u"%I:%M:%S %p"};
  const struct {
    const char16_t *format, *pictures;  // of the short date, the long date and the time
  } kCases[] = {
      {u"%d.%m.%Y", u"dd.MM.yyyy|dd.MM.yyyy|"},
      {u"%-d/%-m/%y", u"d/M/yy|d/M/yy|"},
      {u"%a %d %b %Y %T %Z", u"ddd dd MMM yyyy|dddd dd MMMM yyyy|HH:mm:ss"},
      {u"%Y年%m月%d日 %H時%M分", u"yyyy'年'MM'月'dd'日'|yyyy'年'MM'月'dd'日'|HH'時'mm'分'"},
      {u"%x %r", u"dd.MM.yyyy|dd.MM.yyyy|hh:mm:ss tt"},
      {u"%A, %d. %B %Y. %T", u"dddd, dd. MMMM yyyy.|dddd, dd. MMMM yyyy.|HH:mm:ss"},
      {u"%d.\u00A0%B\u202F%Y", u"dd. MMMM yyyy|dd. MMMM yyyy|"},
      {u"%e o'clock", u"d' o''clock'|d' o''clock'|"},
      {u"%Ey%%%Od", u"yy%dd|yy%dd|"},
      {u"%Q 100%", u"||"},
  };
  for (const auto& [format, pictures] : kCases) {
    std::u16string made = pictureOf(format, PictureKind::ShortDate, kFormats) + u"|";
    made += pictureOf(format, PictureKind::LongDate, kFormats) + u"|";
    EXPECT_EQ(toUtf8(made + pictureOf(format, PictureKind::Time, kFormats)), toUtf8(pictures));
  }
  const StrftimeFormats kCircular{u"%x%x%x%d", u"", u""};  // ends all the same
  EXPECT_FALSE(pictureOf(u"%x", PictureKind::ShortDate, kCircular).empty());
}

TEST(DatePicture, FindsSeparators) {
  const std::pair<const char16_t*, const char16_t*> kCases[] = {
      {u"M/d/yyyy", u"/"},    {u"d. MMMM", u". "}, {u"yyyy'年'M", u""},
      {u"'kl. 'HH.mm", u"."}, {u"'open", u""},     {u"yyyy", u""},
  };
  for (const auto& [picture, separator] : kCases) EXPECT_EQ(pictureSeparator(picture), separator);
}

TEST(LocaleTable, UnknownLocalesReadAsAmericanEnglish) {
  for (const std::string name : {"", "C", "C.UTF-8", "POSIX", "en_US.UTF-8", "xx_XX", "../x"}) {
    const LocaleTable table(LocaleNames{name, name, name, name});
    EXPECT_EQ(table.item(0x1F), u"M/d/yyyy") << name;
    EXPECT_EQ(table.item(0x1001), u"English") << name;
  }
}

TEST(LocaleTable, TakesTheTextsOfAnInstalledLocale) {
  const std::string name = "de_DE.UTF-8";
  const locale_t found = newlocale(LC_ALL_MASK, name.c_str(), locale_t{});
  if (found == locale_t{}) GTEST_SKIP() << "the locale " << name << " is not installed";
  freelocale(found);
  const LocaleTable table(LocaleNames{name, name, name, name});
  test::forEachPair(
      u"0E=,|10=3;0|14=€|1D=.|1F=dd.MM.yyyy|20=dddd dd MMMM yyyy|2A=Montag|30=Sonntag|31=Mo|37=So"
      u"|3A=März|43=Dezember|46=Mär|1001=German|1002=Germany|1003=HH:mm:ss",
      [&table](std::u16string_view item, const std::string& text) {
        const auto number = static_cast<std::uint32_t>(std::stoul(toUtf8(item), nullptr, 16));
        EXPECT_EQ(toUtf8(table.item(number)), text);
      });
  const LocaleTable mixed(LocaleNames{"C", name, "", "C"});
  EXPECT_EQ(mixed.item(0x0E), u",");
  EXPECT_EQ(mixed.item(0x38), u"January");
}

// Environment variables as they were, when the test ends.
class UserEnvironment : public testing::Test {
 protected:
  void set(const char* name, const std::string& value) {
    const char* const old = getenv(name);
    saved_.emplace(name, old != nullptr ? std::optional<std::string>(old) : std::nullopt);
    setenv(name, value.c_str(), 1);
  }
  ~UserEnvironment() override {
    for (const auto& [name, value] : saved_)
      value ? setenv(name.c_str(), value->c_str(), 1) : unsetenv(name.c_str());
  }

 private:
  std::map<std::string, std::optional<std::string>> saved_;
};

TEST_F(UserEnvironment, NamesOfLocales) {
  for (const char* name : {"LC_ALL", "LC_TIME", "LC_NUMERIC", "LC_MONETARY", "LANG"}) set(name, "");
  EXPECT_EQ(localeNamesOfEnvironment().time, "");
  set("LANG", "de_DE");
  set("LC_NUMERIC", "fr_FR");
  EXPECT_EQ(localeNamesOfEnvironment().time, "de_DE");
  EXPECT_EQ(localeNamesOfEnvironment().numeric, "fr_FR");
  set("LC_ALL", "C");
  EXPECT_EQ(localeNamesOfEnvironment().numeric, "C");
}

TEST_F(UserEnvironment, FoldersOfAUser) {
  const TempFolder owner;
  const std::filesystem::path home = owner.native();
  set("HOME", home.string() + "/");
  set("XDG_CONFIG_HOME", "relative paths do not count");
  set("XDG_DATA_HOME", home / "data");
  set("XDG_CACHE_HOME", "");
  for (const char* folder : {".config", "data/applications", "Bilder", "Music", "Desktop"}) {
    std::filesystem::create_directories(home / folder);
  }
  std::ofstream(home / ".config/user-dirs.dirs")
      << "XDG_PICTURES_DIR=\"$HOME/Bilder/\"\nXDG_DOCUMENTS_DIR=\"/usr\"\n"
         "XDG_DESKTOP_DIR=\"$HOME/\"\nXDG_VIDEOS_DIR=\"relative\"\n";
  // 13 is not configured and has its usual name; 16 is switched off, 14 not absolute, 21 not there.
  test::forEachPair(
      u"2=~/data/applications|5=/usr|9=|13=~/Music|14=|16=|21=|26=~/.config|28=~/data|32=|36=/usr"
      u"|39=~/Bilder|40=~|48=",
      [&home](std::u16string_view id, std::string path) {
        if (path.starts_with("~")) path.replace(0, 1, home.string());
        EXPECT_EQ(toUtf8(specialFolder(std::stoi(toUtf8(id)))), path);
      });
}

}  // namespace
}  // namespace quendal::platform
