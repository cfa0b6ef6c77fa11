// HTMLEncode, URLEncode, URLDecode, SafeSQLString, SafeFileName, MD5 and UUID.
#include <gtest/gtest.h>

#include <cctype>
#include <set>

#include "strings/md5.h"
#include "tests/strings/strings_object.h"
#include "tests/support/script_object.h"

namespace quendal::test {
namespace {

struct Row {
  const char16_t* member;
  Variant argument;
  const char* result;
};

void expectRows(std::initializer_list<Row> rows) {
  for (const Row& row : rows) {
    EXPECT_EQ(called(row.member, row.argument), inQuotes(row.result))
        << toUtf8(row.member) << " of " << shown(row.argument);
  }
}

TEST(Encoders, AsciiText) {
  expectPairs(u"URLEncode",
              u"a b&c=a%20b%26c|a-b_c.d=a%2Db%5Fc%2Ed|AZaz09@[`{/:=AZaz09%40%5B%60%7B%2F%3A"
              u"|\t\n=%9%A|=");
  expectPairs(u"URLDecode", u"a+b%20c%2d=a b c-|%41%4a%4A%7E!&=AJJ~!&|\u20AC\u00E9=\u20AC\u00E9|=");
  expectPairs(u"SafeSQLString",
              u"O'Brien=O''Brien|&#39;x&#39;=''x''|&#34;&#32;&#38;&#60;&#61;&#62;=\" &<=>"
              u"|&#38;#39; &#38;#34; &#038; &#X3C;='' &#34; &#038; &#X3C;|''=''''|=");
  expectPairs(u"SafeFileName", u"my file's name.txt=MY_FILES_NAME_TXT|a//b\\:*?\r\n=A__B______|=");
  expectRows({
      {u"HTMLEncode", u"a<b & c", "a&#60;b &#38; c"},
      {u"HTMLEncode", u"\"'=>~\x7F", "&#34;&#39;&#61;&#62;~\x7F"},
      {u"HTMLEncode", u"\t\r\n", "&#9;&#13;&#10;"},
      {u"HTMLEncode", std::u16string(1, u'\0'), "&#0;"},
      {u"HTMLEncode", Boolean::True, "True"},
      {u"URLEncode", 1.5, "1%2E5"},
      {u"MD5", u"abc", "900150983cd24fb0d6963f7d28e17f72"},
      {u"MD5", 123, "202cb962ac59075b964b07152d234b70"},
  });
  for (const char16_t* member :
       {u"HTMLEncode", u"URLEncode", u"URLDecode", u"SafeSQLString", u"SafeFileName"}) {
    EXPECT_EQ(called(member, Variant()), "\"\"");
  }
}

TEST(Encoders, CodePageCharacters) {
  if (!isWesternCodePage()) GTEST_SKIP() << "the system's code page is not 1252";
  expectRows({
      {u"HTMLEncode", u"\u00E9\u20AC\u00A0", "&#233;&#128;&#160;"},
      {u"HTMLEncode", u"<\u65E5\U0001F600", "&#60;\xE6\x97\xA5\xF0\x9F\x98\x80"},
      {u"URLEncode", u"\u00E9\u20AC\u65E5\U0001F600", "%E9%80%3F%3F%3F"},
      {u"URLDecode", u"%E9%80%e9", "\xC3\xA9\xE2\x82\xAC\xC3\xA9"},
      {u"Capitalize", u"\u00C9COLE \u00C9T\u00C9 \u65E5x",
       "\xC3\x89"
       "cole \xC3\x89t\xC3\xA9 ?x"},
      {u"SafeFileName", u"\u00E9\u00C9\u00FC\u00F7 \u00D7\u00DF\u00FF\u00FD\u65E5\u017F\u212A",
       "\xC3\x89\xC3\x89\xC3\x9C\xC3\xB7________"},
      {u"MD5", u"\u00E9\u20AC", "c17ca5490b95aa07bb32d9127125086f"},
      {u"MD5", u"\u65E5?", "ea03fcb8c47822bce772cf6c07d0ebbb"},
  });
}

TEST(Encoders, MalformedEscapesRaise) {
  for (const char16_t* wrong : {u"a%", u"a%4", u"%4g", u"%g4", u"%+1", u"%\u0661\u0661"}) {
    EXPECT_EQ(called(u"URLDecode", wrong), "error 13") << toUtf8(wrong);
  }
}

TEST(Encoders, FailuresOfArguments) {
  const Variant object(ScriptObject().object());
  const struct {
    const char16_t* member;
    const char* null;
    const char* otherwise;
  } rows[] = {
      {u"HTMLEncode", "Empty", "Empty"},      {u"SafeSQLString", "Empty", "Empty"},
      {u"SafeFileName", "\"\"", "\"\""},      {u"URLEncode", "error 94", "error 13"},
      {u"URLDecode", "error 94", "error 13"}, {u"MD5", "error 94", "error 13"},
      {u"Capitalize", "Empty", "Empty"},      {u"ExtractFileName", "Empty", "Empty"},
      {u"ExtractFilePath", "Empty", "Empty"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(called(row.member, Variant::null()), row.null);
    EXPECT_EQ(called(row.member, arrayOf({Variant(1)})), row.otherwise);
    EXPECT_EQ(called(row.member, Variant::missing()), row.otherwise);
    // An object's own error is passed on where errors are.
    const bool raises = std::string_view(row.null) == "error 94";
    EXPECT_EQ(called(row.member, object), raises ? "error 438" : row.otherwise);
    EXPECT_EQ(called(row.member, Variant(Object())), raises ? "error 91" : row.otherwise);
  }
}

// The digest of the digests of every length around the places where the padding changes.
TEST(Md5, EveryLengthOfTheLastBlock) {
  std::string all;
  for (std::size_t size = 0; size <= 200; ++size) {
    const auto digest = strings::md5(std::string(size, static_cast<char>(size * 37)));
    all.append(digest.begin(), digest.end());
  }
  EXPECT_EQ(toUtf8(strings::hexText(strings::md5(all))), "2816d7cb1742c14303b89f5ff3793944");
}

TEST(Uuid, IsNewAndInTheUsualForm) {
  std::set<std::string> seen;
  const std::string form = "\"XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX\"";
  for (int i = 0; i < 100; ++i) {
    std::string id = called(u"UUID");
    EXPECT_TRUE(seen.insert(id).second);
    for (char& c : id) c = std::isdigit(c) != 0 || (c >= 'A' && c <= 'F') ? 'X' : c;
    EXPECT_EQ(id, form);
  }
}

}  // namespace
}  // namespace quendal::test
