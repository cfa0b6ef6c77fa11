// Capitalize, PadLeft, PadRight, ExtractFileName, ExtractFilePath, FormatFileSize and
// AppendToUTF8File.
#include <gtest/gtest.h>

#include <filesystem>
#include <limits>

#include "core/apartment.h"
#include "platform/locale.h"
#include "tests/platform/temp_folder.h"
#include "tests/strings/strings_object.h"
#include "tests/support/script_object.h"
#include "tests/support/text_rows.h"

namespace quendal::test {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

TEST(TextFunctions, CapitalsAndPaths) {
  expectPairs(u"Capitalize",
              u"hello WORLD=Hello World|  two  spaces=  Two  Spaces|="
              u"|one\ttwo-three o'neil 4x=One\ttwo-three O'neil 4x");
  expectPairs(u"ExtractFileName",
              u"C:\\dir\\file.txt=file.txt|file.txt=file.txt|C:\\dir\\=|a/b=a/b");
  expectPairs(u"ExtractFilePath", u"C:\\a\\b.txt=C:\\a\\|\\x=\\|a/b.txt=|=");
  EXPECT_EQ(called(u"Capitalize", Boolean::True), "\"True\"");
  EXPECT_EQ(called(u"ExtractFileName", 12), "\"12\"");
  for (const char16_t* member : {u"Capitalize", u"ExtractFileName", u"ExtractFilePath"}) {
    EXPECT_EQ(called(member, Variant()), "\"\"");
  }
}

TEST(TextFunctions, Padding) {
  const struct {
    Variant text, fill, length;
    const char* left;
    const char* right;
  } rows[] = {{u"7", u"0", 3, "007", "700"},
              {u"abcdef", u"0", 4, "00abcdef", "abcdef00"},
              {u"ab", u"xy", 4, "xxab", "abxx"},
              {u"ab", u"", 4, "  ab", "ab  "},
              {u"ab", 70, u"3", "7ab", "ab7"},
              {u"ab", u"0", -1, "000ab", "ab000"},
              {u"a", u"0", 3.5, "00a", "a00"},
              {u"ab", u"0", 3.5, "00ab", "ab00"},  // 2.5 and 1.5, to even
              // Where no pad can be made, the text alone.
              {u"ab", Variant::null(), 5, "ab", "ab"},
              {u"ab", u"0", kInfinity, "ab", "ab"},
              {u"ab", u"0", kNan, "ab", "ab"},
              {u"ab", arrayOf({}), Variant(Object()), "ab", "ab"}};
  for (const auto& row : rows) {
    EXPECT_EQ(called(u"PadLeft", row.text, row.fill, row.length), inQuotes(row.left));
    EXPECT_EQ(called(u"PadRight", row.text, row.fill, row.length), inQuotes(row.right));
  }
  EXPECT_EQ(called(u"PadLeft", Variant::null(), u"0", 3), "Empty");
  EXPECT_EQ(called(u"PadRight", arrayOf({}), u"0", 3), "Empty");
}

TEST(TextFunctions, FileSizes) {
  if (platform::formatNumber(1234.5, 1) != u"1,234.5") {
    GTEST_SKIP() << "the locale's numbers are not those of English (United States)";
  }
  forEachPair(
      u"0=0 bytes|1023=1,023 bytes|1024=1.00KB|1152=1.13KB|10239=10.00KB|10239.6=10.0KB"
      u"|10240=10.0KB|102399=100.0KB|102400=100KB|1023999=1,000KB|1024000=0.98MB"
      u"|10239999=9.77MB|10240000=9.8MB|104857600=100MB|1023999999=977MB|1024000000=0.95GB"
      u"|10239999999=9.54GB|10240000000=|1e300=|-1500=-1,500 bytes|-0.4=0 bytes|2.5=3 bytes",
      [](std::u16string_view size, const std::string& text) {
        EXPECT_EQ(called(u"FormatFileSize", size, Boolean::False), inQuotes(text));
        EXPECT_EQ(called(u"FormatFileSize", doubleOf(Variant(size)), u"false"), inQuotes(text));
      });
  EXPECT_EQ(called(u"FormatFileSize", 1536, Boolean::True), "\"1.50KB (1,536 bytes)\"");
  EXPECT_EQ(called(u"FormatFileSize", 12345678901234567.0, 1),
            "\" (12,345,678,901,234,600 bytes)\"");
  EXPECT_EQ(called(u"FormatFileSize", Variant(), Boolean::True), "\"0 bytes (0 bytes)\"");
  EXPECT_EQ(called(u"FormatFileSize", 1024, Variant::null()), "\"1.00KB\"");
  EXPECT_EQ(called(u"FormatFileSize", 1024, arrayOf({})), "\"1.00KB\"");
  for (const Variant& wrong : {Variant::null(), Variant(u"x"), Variant(kInfinity), arrayOf({}),
                               Variant(-kInfinity), Variant(kNan)}) {
    EXPECT_EQ(called(u"FormatFileSize", wrong, Boolean::True), "Empty");
  }
}

TEST(AppendToUtf8File, AppendsAndKeepsWhatIsThere) {
  const platform::TempFolder folder;
  const struct {
    std::string before;
    Variant text;
    std::string after;
  } rows[] = {{"", u"x\u00E9", "x\xC3\xA9"},
              {"\xEF\xBB\xBF.", u"\U0001F600", "\xEF\xBB\xBF.\xF0\x9F\x98\x80"},
              {"a", std::u16string{0xD800, u'.'}, "a\xEF\xBF\xBD."},
              {"a", 12, "a12"},
              {"a", u"", "a"},
              {"a", Variant(), "a"}};
  std::u16string path = folder / u"file";
  for (const auto& row : rows) {
    path += u'x';  // another one
    ASSERT_EQ(platform::createFile(path, platform::bytesOf(row.before)), platform::FileError::None);
    EXPECT_EQ(called(u"AppendToUTF8File", path, row.text), "True");
    EXPECT_EQ(platform::contentOf(path), row.after);
  }
}

TEST(AppendToUtf8File, FailuresAreFalseAndChangeNothing) {
  const platform::TempFolder folder;
  const std::u16string path = folder / u"file";
  ASSERT_EQ(platform::createFile(path, platform::bytesOf("kept")), platform::FileError::None);
  for (const Variant& wrong : {Variant(folder / u"missing"), Variant(folder / u"missing\\file"),
                               Variant(folder.path()), Variant(path + u"\\"), Variant(u""),
                               Variant(), Variant::null(), arrayOf({}), Variant(Object())}) {
    EXPECT_EQ(called(u"AppendToUTF8File", wrong, u"x"), "False");
  }
  for (const Variant& wrong : {Variant::null(), arrayOf({}), Variant(Object())}) {
    EXPECT_EQ(called(u"AppendToUTF8File", path, wrong), "False");
  }
  EXPECT_EQ(platform::listFiles(folder.path()).size(), 1u);
  EXPECT_EQ(pendingError(), 0);

  namespace fs = std::filesystem;
  for (const fs::perms right : {fs::perms::owner_write, fs::perms::owner_read}) {
    fs::permissions(folder.native() / "file", right, fs::perm_options::remove);
    const bool denied = platform::checkReadable(path) != platform::FileError::None ||
                        platform::appendToFile(path, {}) != platform::FileError::None;
    if (denied) {
      EXPECT_EQ(called(u"AppendToUTF8File", path, u"x"), "False");
    } else {
      std::puts("not shown: a file without a right, since this account needs none");
    }
    fs::permissions(folder.native() / "file", right, fs::perm_options::add);
  }
  EXPECT_EQ(platform::contentOf(path), "kept");
}

}  // namespace
}  // namespace quendal::test
