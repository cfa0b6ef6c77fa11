// Version records of sound files. On Windows the system's functions read them, elsewhere our own
// reader; the same files give the same records.
#include "platform/version_resource.h"

#include <gtest/gtest.h>

#include "base/utf8.h"
#include "platform/code_page.h"
#include "tests/platform/temp_folder.h"
#include "tests/support/pe_builder.h"
#include "versioninfo/version_record.h"
#include "versioninfo/version_text.h"

namespace quendal::versioninfo {
namespace {

using test::PeKind;
using test::VersionParts;

constexpr std::uint32_t translation(std::uint32_t language, std::uint32_t codePage) {
  return language | codePage << 16;
}

VersionRecord recordOf(const VersionParts& parts, PeKind kind = PeKind::Pe32) {
  const platform::TempFolder folder;
  EXPECT_EQ(
      platform::createFile(folder / u"file.dll", peImage(kind, {{0x0409, versionBlock(parts)}})),
      platform::FileError::None);
  return readVersionRecord(folder / u"file.dll");
}

TEST(VersionTextTest, WordsAreSignedAndLaidOutByTheBuild) {
  const struct {
    std::uint32_t high, low;
    std::u16string_view text;
  } cases[] = {{0x00010000, 0x00000005, u"1.00.0005"},
               {0x00010064, 0x00013039, u"1.100.0112345"},
               {0x00010002, 0x0003FFF7, u"1.02.03-09"},
               {0x80000000, 0x00003039, u"-32768.00.12345"},
               {0x0001FFFF, 0x8000FFFB, u"1.-01.-0005"}};
  for (const auto& c : cases) EXPECT_EQ(versionText(c.high, c.low), c.text);
  EXPECT_EQ(structureVersionText(0x00010000), u"1.0");
  EXPECT_EQ(structureVersionText(0xFFFF8000), u"-1.-32768");
}

TEST(VersionTextTest, NamesOfNumbers) {
  const auto namesTo = [](std::uint32_t last, auto nameOf) {
    std::string names;
    for (std::uint32_t number = 0; number <= last; ++number) names += toUtf8(nameOf(number)) + ",";
    return names;
  };
  const auto subtypeOf = [](std::uint32_t type) {
    return [type](std::uint32_t subtype) { return fileSubtypeText(type, subtype); };
  };
  EXPECT_EQ(namesTo(8, fileTypeText), ",Application,DLL,Driver,Font,VxD,,Lib,,");
  EXPECT_EQ(namesTo(11, subtypeOf(3)),
            "Unknown,Printer drv,Keyboard drv,Language drv,Display drv,Mouse drv,Network drv,"
            "System drv,Installable,Sound drv,Comm drv,Unknown,");
  EXPECT_EQ(namesTo(4, subtypeOf(4)), ",Raster Font,Vector Font,TrueType Font,,");
  const std::pair<std::uint32_t, std::u16string_view> systems[] = {
      {0x00010001, u"DOS-Win16"},     {0x00010004, u"DOS-Win32"}, {0x00020002, u"OS/2-16 PM-16"},
      {0x00030003, u"OS/2-16 PM-32"}, {0x00040004, u"NT-Win32"},  {0x00040000, u"Unknown"}};
  for (const auto& [number, text] : systems) EXPECT_EQ(fileOsText(number), text);
  EXPECT_EQ(fileFlagsText(0x21), u"Debug Special ");
  EXPECT_EQ(fileFlagsText(0xFFFFFFFF), u"Debug PreRel Patched Private Info Special ");
}

TEST(VersionRecordTest, HoldsEverythingOfASoundFile) {
  VersionParts parts;
  parts.fixedInfo = {0xFEEF04BD, 0x00010000, 0x00060001, 0x1DB1446A, 0x00020003, 0x000C0004, 0,
                     0x21,       0x00040004, 3,          7,          0,          0};
  parts.translations = {translation(0x0409, 0x04E4), translation(0x0407, 0x04B0)};
  // The longer of two keys with the same beginning comes first; every value differs from the
  // others, in length and so in padding too.
  const std::u16string_view keys[] = {u"Comments",         u"companyname",      u"FileDescription",
                                      u"FileVersion",      u"InternalName",     u"LegalCopyright",
                                      u"LegalTrademarks",  u"OriginalFilename", u"ProductName",
                                      u"ProductVersion",   u"PrivateBuild",     u"SpecialBuild",
                                      u"LegalTrademarks1", u"LegalTrademarks2"};
  std::vector<std::u16string> values;
  test::StringTable table{u"040904e4", {}};
  for (const auto key : keys) {
    values.push_back(u"\u00A9" + std::u16string(values.size(), u'x') + std::u16string(key));
    table.strings.emplace(table.strings.begin(), key, values.back());
  }
  parts.tables = {{u"040704B0", {{u"CompanyName", u"not this one"}}}, table};

  for (const PeKind kind : {PeKind::Pe32, PeKind::Pe32Plus}) {
    const VersionRecord record = recordOf(parts, kind);
    EXPECT_TRUE(record.available);
    EXPECT_EQ(record.verStructure, u"1.0");
    EXPECT_EQ(record.verFile, u"6.01.760117514");
    EXPECT_EQ(record.verProduct, u"2.03.1204");
    EXPECT_EQ(record.fileFlags, u"Debug Special ");
    EXPECT_EQ(record.fileOs, u"NT-Win32");
    EXPECT_EQ(record.fileType, u"Driver");
    EXPECT_EQ(record.fileSubtype, u"System drv");
    EXPECT_TRUE(record.values[0].starts_with(u"English"));  // some systems add the country
    for (std::size_t i = 0; i < values.size(); ++i) EXPECT_EQ(record.values[i + 1], values[i]) << i;
  }
}

TEST(VersionRecordTest, StringsComeFromTheFirstTranslationOrItsEnglishCounterpart) {
  using test::StringTable;
  const auto table = [](const std::u16string& key, const std::u16string& company) {
    return StringTable{key, {{u"CompanyName", company}, {u"ProductName", key}}};
  };
  const StringTable english = table(u"040904E4", u"English Works");
  const StringTable nameless = table(u"040704E4", u"");
  const std::uint32_t german = translation(0x0407, 0x04E4);
  const struct {
    const char* what;
    std::vector<std::uint32_t> translations;
    std::vector<StringTable> tables;
    std::u16string_view company, language;
  } cases[] = {
      {"first has a name", {german}, {table(u"040704E4", u"Werke"), english}, u"Werke", u"0407"},
      {"first is nameless", {german}, {nameless, english}, u"English Works", u"0409"},
      {"first is missing", {german}, {english}, u"English Works", u"0409"},
      {"both are nameless", {german}, {nameless, table(u"040904E4", u"")}, u"", u"0407"},
      {"other code page", {german}, {nameless, table(u"040904B0", u"Works")}, u"", u"0407"},
      {"second counts for nothing",
       {german, translation(0x040C, 0x04E4)},
       {table(u"040C04E4", u"Werke")},
       u"",
       u""},
      {"no translation", {}, {english}, u"", u""},
  };
  for (const auto& c : cases) {
    const VersionRecord record = recordOf({.translations = c.translations, .tables = c.tables});
    EXPECT_TRUE(record.available) << c.what;
    EXPECT_EQ(record.value(VersionString::CompanyName), c.company) << c.what;
    EXPECT_EQ(record.value(VersionString::ProductName).substr(0, 4), c.language) << c.what;
    EXPECT_EQ(record.value(VersionString::Language).empty(), c.translations.empty()) << c.what;
  }
}

TEST(VersionRecordTest, TextPassesThroughTheCodePageAndEndsAtItsNul) {
  const std::u16string mixed = u"Na\u00EFve \u20AC \u4E00";
  const VersionRecord record =
      recordOf({.translations = {translation(0x0409, 0x04B0)},
                .tables = {{u"040904B0",
                            {{u"Comments", u""},
                             {u"CompanyName", mixed},
                             {u"ProductName", std::u16string(u"one\0two", 7)}}}}});
  EXPECT_EQ(record.value(VersionString::Comments), u"");
  EXPECT_EQ(record.value(VersionString::CompanyName),
            platform::fromCodePage(platform::toCodePage(mixed)));
  EXPECT_EQ(record.value(VersionString::ProductName), u"one");
}

}  // namespace
}  // namespace quendal::versioninfo
