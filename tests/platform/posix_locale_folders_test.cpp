// Locales of the C library, and special folders of the user-directories configuration.
#include <fstream>

#include "platform/folders.h"
#include "platform/posix/date_picture.h"
#include "platform/posix/locale_table.h"
#include "tests/platform/posix_environment.h"
#include "tests/platform/temp_folder.h"
#include "tests/support/text_rows.h"

namespace quendal::platform {
namespace {

TEST(DatePicture, ConvertsFormats) {
  using enum PictureKind;
  const StrftimeFormats kFormats{u"%d.%m.%Y", u"%T", u"%I:%M:%S %p"};
  // Pictures of the short date, the long date and the time.
  const std::pair<const char16_t*, const char16_t*> kCases[] = {
      {u"%-d/%-m/%y", u"d/M/yy|d/M/yy|"},
      {u"%a %d %b %Y %T %Z", u"ddd dd MMM yyyy|dddd dd MMMM yyyy|HH:mm:ss"},
      {u"%Y年%m月%d日 %H時%M分", u"yyyy'年'MM'月'dd'日'|yyyy'年'MM'月'dd'日'|HH'時'mm'分'"},
      {u"%x %r", u"dd.MM.yyyy|dd.MM.yyyy|hh:mm:ss tt"},
      {u"%F, %R", u"yyyy-MM-dd|yyyy-MM-dd|HH:mm"},
      {u"%A, %d. %B %Y. %T", u"dddd, dd. MMMM yyyy.|dddd, dd. MMMM yyyy.|HH:mm:ss"},
      {u"%d.\u00A0%h\u202F%Y", u"dd. MMM yyyy|dd. MMMM yyyy|"},
      {u"%e o'clock", u"d' o''clock'|d' o''clock'|"},
      {u"%e.-- %-k %l %P", u"d.--|d.--|H h tt"},
  };
  for (const auto& [format, pictures] : kCases) {
    std::u16string made;
    for (const PictureKind kind : {ShortDate, LongDate, Time})
      made += u"|" + pictureOf(format, kind, kFormats);
    EXPECT_EQ(toUtf8(made.substr(1)), toUtf8(pictures));
  }
  const StrftimeFormats kCircular{u"%x%x%x%d", u"", u""};  // ends all the same
  EXPECT_FALSE(pictureOf(u"%x", ShortDate, kCircular).empty());

  test::forEachPair(u"M/d/yyyy=/|d. MMMM=. |yyyy'年'M=|'kl. 'HH.mm=.|'open=|yyyy=",
                    [](std::u16string_view picture, const std::string& separator) {
                      EXPECT_EQ(toUtf8(pictureSeparator(picture)), separator);
                    });
}

void expectItems(const LocaleNames& names, std::u16string_view rows) {
  const LocaleTable table(names);
  test::forEachPair(rows, [&table](std::u16string_view item, const std::string& text) {
    const auto number = static_cast<std::uint32_t>(std::stoul(toUtf8(item), nullptr, 16));
    EXPECT_EQ(toUtf8(table.item(number)), text);
  });
}

TEST(LocaleTable, UnknownLocalesReadAsAmericanEnglish) {
  for (const std::string name : {"", "C.UTF-8", "POSIX", "xx_XX", "../x"})
    expectItems({name, name, name, name}, u"1F=M/d/yyyy|1001=English");
}

TEST(LocaleTable, TakesTheTextsOfTheCLibrarysLocales) {
  const TempFolder owner;  // of locales in single-byte encodings, which are made in no time
  const std::string folder = owner.native();
  for (const std::string options : {"de_DE -f ISO-8859-15", "en_IN -f ISO-8859-1"}) {
    const std::string name = options.substr(0, 5);
    const std::string command =
        "localedef -c -i " + options + " " + folder + "/" + name + " >/dev/null 2>&1";
    if (std::system(command.c_str()) == -1 || !std::filesystem::exists(folder + "/" + name))
      GTEST_SKIP() << "the system has no sources of locales";
  }
  // In a process of its own, since the C library loses memory with this variable.
  EXPECT_TRUE(holdsInChild([&] {
    const EnvironmentChange path("LOCPATH", folder);
    const std::string german = "de_DE", indian = "en_IN";
    expectItems(
        {german, german, german, german},
        u"0E=,|0F=.|10=3;0|14=€|1D=.|1E=:|1F=dd.MM.yyyy|20=dddd dd MMMM yyyy|28=|2A=Montag|37=So"
        u"|38=Januar|3A=März|43=Dezember|46=Mär|51=-|52=1|1001=German|1002=Germany|1003=HH:mm:ss");
    expectItems({indian, indian, indian, indian}, u"10=3;2;0|14=INR|1D=/|1F=dd/MM/yy|28=AM|29=PM");
    expectItems({"C", german, "", "C"}, u"0E=,|14=$|38=January|1001=English");
    expectItems({"C", "C", german, german}, u"0E=.|14=€|38=January|1001=German");
    return !testing::Test::HasFailure();
  }));
}

TEST(LocaleTable, NamesComeFromTheEnvironment) {
  const EnvironmentChange changes[] = {
      {"LC_ALL", ""}, {"LC_TIME", ""}, {"LC_MONETARY", "C"}, {"LANG", "de"}, {"LC_NUMERIC", "fr"}};
  const auto names = [] {
    const LocaleNames found = localeNamesOfEnvironment();
    return found.time + " " + found.numeric + " " + found.monetary + " " + found.language;
  };
  EXPECT_EQ(names(), "de fr C de");
  const EnvironmentChange all("LC_ALL", "it");
  EXPECT_EQ(names(), "it it it it");
}

TEST(PosixFolders, AreThoseOfTheUser) {
  const TempFolder owner;
  const std::filesystem::path home = owner.native();
  const EnvironmentChange changes[] = {{"HOME", home.string() + "/"},
                                       {"XDG_CONFIG_HOME", "relative paths do not count"},
                                       {"XDG_DATA_HOME", home / "data"},
                                       {"XDG_CACHE_HOME", ""}};
  for (const char* folder : {".config", "data/applications", "Bilder", "Music", "Desktop"})
    std::filesystem::create_directories(home / folder);
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
