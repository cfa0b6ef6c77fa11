// Locales of the C library, and special folders of the user-directories configuration.
#include <gtest/gtest.h>
#include <locale.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <optional>

#include "platform/code_page.h"
#include "platform/folders.h"
#include "platform/posix/date_picture.h"
#include "platform/posix/locale_table.h"
#include "tests/platform/temp_folder.h"

namespace quendal::platform {
namespace {

TEST(DatePicture, ConvertsFormats) {
  const StrftimeFormats kFormats{u"%d.%m.%Y", u"%T", u"%I:%M:%S %p"};
  const struct {
    const char16_t* format;
    const char16_t* shortDate;
    const char16_t* longDate;
    const char16_t* time;
  } kCases[] = {
      {u"%d.%m.%Y", u"dd.MM.yyyy", u"dd.MM.yyyy", u""},
      {u"%-d/%-m/%y", u"d/M/yy", u"d/M/yy", u""},
      {u"%a %d %b %Y %T %Z", u"ddd dd MMM yyyy", u"dddd dd MMMM yyyy", u"HH:mm:ss"},
      {u"%a %-d %b %Y, %T", u"ddd d MMM yyyy", u"dddd d MMMM yyyy", u"HH:mm:ss"},
      {u"%Y年%m月%d日 %H時%M分", u"yyyy'年'MM'月'dd'日'", u"yyyy'年'MM'月'dd'日'", u"HH'時'mm'分'"},
      {u"%x %r", u"dd.MM.yyyy", u"dd.MM.yyyy", u"hh:mm:ss tt"},
      {u"%A, %d. %B %Y. %T", u"dddd, dd. MMMM yyyy.", u"dddd, dd. MMMM yyyy.", u"HH:mm:ss"},
      {u"%d.\u00A0%B\u202F%Y", u"dd. MMMM yyyy", u"dd. MMMM yyyy", u""},
      {u"%e o'clock", u"d' o''clock'", u"d' o''clock'", u""},
      {u"%Ey%%%Od", u"yy%dd", u"yy%dd", u""},
      {u"%Q 100%", u"", u"", u""},
      {u"", u"", u"", u""},
  };
  for (const auto& each : kCases) {
    const auto picture = [&](PictureKind kind) {
      return toUtf8(pictureOf(each.format, kind, kFormats));
    };
    EXPECT_EQ(picture(PictureKind::ShortDate), toUtf8(each.shortDate));
    EXPECT_EQ(picture(PictureKind::LongDate), toUtf8(each.longDate));
    EXPECT_EQ(picture(PictureKind::Time), toUtf8(each.time));
  }
  const StrftimeFormats kCircular{u"%x%x%x%d", u"", u""};  // ends all the same
  EXPECT_FALSE(pictureOf(u"%x", PictureKind::ShortDate, kCircular).empty());
}

TEST(DatePicture, FindsSeparators) {
  const std::pair<const char16_t*, const char16_t*> kCases[] = {
      {u"M/d/yyyy", u"/"},    {u"HH:mm", u":"}, {u"d. MMMM", u". "}, {u"yyyy'年'M", u""},
      {u"'kl. 'HH.mm", u"."}, {u"'open", u""},  {u"yyyy", u""},      {u"", u""},
  };
  for (const auto& [picture, separator] : kCases) EXPECT_EQ(pictureSeparator(picture), separator);
}

TEST(LocaleTable, UnknownLocalesReadAsAmericanEnglish) {
  for (const std::string name : {"", "C", "C.UTF-8", "POSIX", "en_US.UTF-8", "xx_XX", "../x"}) {
    const LocaleTable table(LocaleNames{name, name, name, name});
    EXPECT_EQ(table.item(0x1F), u"M/d/yyyy") << name;
    EXPECT_EQ(table.item(0x1001), u"English") << name;
    EXPECT_EQ(table.item(0x0F), u",") << name;
    EXPECT_EQ(table.item(0x48), u"May") << name;
  }
}

TEST(LocaleTable, TakesTheTextsOfAnInstalledLocale) {
  const std::string name = "de_DE.UTF-8";
  const locale_t found = newlocale(LC_ALL_MASK, name.c_str(), locale_t{});
  if (found == locale_t{}) GTEST_SKIP() << "the locale " << name << " is not installed";
  freelocale(found);
  const LocaleTable table(LocaleNames{name, name, name, name});
  const std::pair<std::uint32_t, std::u16string_view> kCases[] = {
      {0x0E, u","},          {0x0F, u"."},          {0x10, u"3;0"},
      {0x11, u"2"},          {0x14, u"€"},          {0x1D, u"."},
      {0x1E, u":"},          {0x1F, u"dd.MM.yyyy"}, {0x2A, u"Montag"},
      {0x30, u"Sonntag"},    {0x31, u"Mo"},         {0x37, u"So"},
      {0x38, u"Januar"},     {0x3A, u"März"},       {0x43, u"Dezember"},
      {0x46, u"Mär"},        {0x1001, u"German"},   {0x1002, u"Germany"},
      {0x1003, u"HH:mm:ss"}, {0x51, u"-"},          {0x20, u"dddd dd MMMM yyyy"},
  };
  for (const auto& [item, text] : kCases) {
    EXPECT_EQ(toUtf8(table.item(item)), toUtf8(text)) << std::hex << item;
  }
  const LocaleTable mixed(LocaleNames{"C", name, "", "C"});
  EXPECT_EQ(mixed.item(0x0E), u",");
  EXPECT_EQ(mixed.item(0x38), u"January");
  EXPECT_EQ(mixed.item(0x14), u"$");
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
    for (const auto& [name, value] : saved_) {
      value ? setenv(name.c_str(), value->c_str(), 1) : unsetenv(name.c_str());
    }
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
  const std::pair<int, std::string> kCases[] = {{2, home / "data/applications"},
                                                {5, "/usr"},
                                                {9, ""},
                                                {13, home / "Music"},
                                                {14, ""},
                                                {16, ""},
                                                {21, ""},
                                                {26, home / ".config"},
                                                {28, home / "data"},
                                                {32, ""},
                                                {36, "/usr"},
                                                {39, home / "Bilder"},
                                                {40, home},
                                                {48, ""}};
  for (const auto& [id, path] : kCases) EXPECT_EQ(toUtf8(specialFolder(id)), path) << id;
}

}  // namespace
}  // namespace quendal::platform
