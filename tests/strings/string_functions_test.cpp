// The members of `ClsString`.
#include <gtest/gtest.h>

#include <cctype>
#include <limits>
#include <set>
#include <tuple>

#include "base/date.h"
#include "core/apartment.h"
#include "platform/code_page.h"
#include "platform/locale.h"
#include "strings/md5.h"
#include "tests/core/raw_call.h"
#include "tests/platform/temp_folder.h"
#include "tests/strings/strings_object.h"
#include "tests/support/script_object.h"
#include "tests/support/text_rows.h"

namespace quendal::test {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

/// Checks a member of one argument with a table of argument and result.
void expectPairs(std::u16string_view member, std::u16string_view rows) {
  forEachPair(rows, [member](std::u16string_view argument, const std::string& result) {
    EXPECT_EQ(called(member, argument), inQuotes(result)) << toUtf8(member);
  });
}

void expectAll(std::initializer_list<std::tuple<const char16_t*, Variant, const char*>> rows) {
  for (const auto& [member, argument, result] : rows)
    EXPECT_EQ(called(member, argument), inQuotes(result)) << toUtf8(member);
}

TEST(TextFunctions, TurnTextIntoText) {
  expectPairs(u"URLEncode",
              u"a-b_c.d=a%2Db%5Fc%2Ed|AZaz09@[`{/:=AZaz09%40%5B%60%7B%2F%3A|\t\n\x10=%9%A%10");
  expectPairs(u"URLDecode", u"a+b%20c%2d=a b c-|%41%4a%4A%7E!&=AJJ~!&|\u20AC\u00E9=\u20AC\u00E9");
  expectPairs(u"SafeSQLString",
              u"O'Brien=O''Brien|&#39;x&#39;=''x''|&#34;&#32;&#38;&#60;&#61;&#62;=\" &<=>"
              u"|&#38;#39; &#38;#34; &#038; &#X3C;='' &#34; &#038; &#X3C;|''=''''");
  expectPairs(u"SafeFileName", u"my file's name.txt=MY_FILES_NAME_TXT|a//b\\:*?\r\n=A__B______");
  expectPairs(u"Capitalize",
              u"hello WORLD=Hello World|  two  spaces=  Two  Spaces"
              u"|one\ttwo-three o'neil 4x=One\ttwo-three O'neil 4x");
  expectPairs(u"ExtractFileName",
              u"C:\\dir\\file.txt=file.txt|file.txt=file.txt|C:\\dir\\=|a/b=a/b");
  expectPairs(u"ExtractFilePath", u"C:\\a\\b.txt=C:\\a\\|\\x=\\|a/b.txt=");
  expectAll({{u"HTMLEncode", u"a<b & c\"'=>~\x7F", "a&#60;b &#38; c&#34;&#39;&#61;&#62;~\x7F"},
             {u"HTMLEncode", std::u16string_view(u"\t\r\n\0", 4), "&#9;&#13;&#10;&#0;"},
             {u"HTMLEncode", Boolean::True, "True"},
             {u"HTMLEncode", std::u16string(32, u'a') + u"<" + std::u16string(63, u'b') + u">",
              (std::string(32, 'a') + "&#60;" + std::string(63, 'b') + "&#62;").c_str()},
             {u"URLEncode", 1.5, "1%2E5"},
             {u"MD5", u"abc", "900150983cd24fb0d6963f7d28e17f72"},
             {u"MD5", 123, "202cb962ac59075b964b07152d234b70"}});
  for (const char16_t* wrong : {u"a%", u"a%4", u"%4g", u"%g4", u"%+1", u"%\u0661\u0661"})
    EXPECT_EQ(called(u"URLDecode", wrong), "error 13") << toUtf8(wrong);
}

TEST(TextFunctions, UseTheCodePage) {
  if (platform::fromCodePage("\x80\xE9") != u"\u20AC\u00E9")
    GTEST_SKIP() << "the system's code page is not 1252";
  expectAll(
      {{u"HTMLEncode", u"\u00E9\u20AC\u00A0", "&#233;&#128;&#160;"},
       {u"HTMLEncode", u"<\u65E5\U0001F600", "&#60;\u65E5\U0001F600"},
       {u"HTMLEncode", u"<0123456789abc\U0001F600<<\u00E9>=\u00E9",
        "&#60;0123456789abc\U0001F600&#60;&#60;&#233;&#62;&#61;&#233;"},
       {u"URLEncode", u"\u00E9\u20AC\u65E5\U0001F600", "%E9%80%3F%3F%3F"},
       {u"URLDecode", u"%E9%80%e9", "\u00E9\u20AC\u00E9"},
       {u"Capitalize", u"\u00C9COLE \u00C9T\u00C9 \u65E5x", "\u00C9cole \u00C9t\u00E9 ?x"},
       {u"SafeFileName", u"\u00E9\u00C9\u00FC\u00F7 \u00D7\u00DF\u00FF\u00FD\u65E5\u017F\u212A",
        "\u00C9\u00C9\u00DC\u00F7________"},
       {u"MD5", u"\u00E9\u20AC", "c17ca5490b95aa07bb32d9127125086f"},
       {u"MD5", u"\u65E5?", "ea03fcb8c47822bce772cf6c07d0ebbb"}});
}

TEST(TextFunctions, TakeWhatHasNoTextEachInTheirWay) {
  const std::tuple<Variant, std::string> values[] = {{Variant::null(), "error 94"},
                                                     {arrayOf({Variant(1)}), "error 13"},
                                                     {Variant::missing(), "error 13"},
                                                     {ScriptObject().object(), "error 438"},
                                                     {Object(), "error 91"}};
  const std::pair<const char*, std::vector<const char16_t*>> rows[] = {
      {"Empty",
       {u"HTMLEncode", u"SafeSQLString", u"Capitalize", u"ExtractFileName", u"ExtractFilePath",
        u"NumberToWords"}},
      {"\"\"", {u"SafeFileName"}},
      {"raises", {u"URLEncode", u"URLDecode", u"MD5"}}};
  for (const auto& [outcome, members] : rows) {
    for (const char16_t* member : members) {
      for (const auto& [value, error] : values)
        EXPECT_EQ(called(member, value), outcome == std::string("raises") ? error : outcome);
      EXPECT_EQ(called(member, Variant()), called(member, u""));
    }
  }
}

// The digest of the digests of every length around the places where the padding changes.
TEST(TextFunctions, Md5OfEveryLengthOfTheLastBlock) {
  std::string all;
  for (std::size_t size = 0; size <= 200; ++size) {
    const auto digest = strings::md5(std::string(size, static_cast<char>(size * 37)));
    all.append(digest.begin(), digest.end());
  }
  EXPECT_EQ(toUtf8(strings::hexText(strings::md5(all))), "2816d7cb1742c14303b89f5ff3793944");
}

TEST(TextFunctions, IdentifiersAreNewAndInTheUsualForm) {
  std::set<std::string> seen;
  for (int i = 0; i < 100; ++i) {
    std::string id = called(u"UUID");
    EXPECT_TRUE(seen.insert(id).second);
    EXPECT_TRUE(id[15] == '4' && std::string("89AB").find(id[20]) != id.npos) << id;
    for (char& c : id) c = std::isdigit(c) != 0 || (c >= 'A' && c <= 'F') ? 'X' : c;
    EXPECT_EQ(id, "\"XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX\"");
  }
}

TEST(TextFunctions, SpellWholeNumbers) {
  forEachPair(
      u"0=zero|12=twelve|45=fourty five|100=one hundred|105=one hundred and  five"
      u"|111=one hundred and  eleven|123=one hundred and  twenty three"
      u"|1005=one thousand and  five|1100=one thousand one hundred"
      u"|2000000=two million|-5=five|-105=one hundred and  five"
      u"|2147483647=two billion one hundred fourty seven million four hundred eighty three thousand"
      u" six hundred and  fourty seven"
      // With a fraction: cut off, but the groups are those of the whole length.
      u"|12.5=and  twelve|123.45=one hundred twenty three thousand and|0.4=zero"
      u"|1234.5=one hundred twenty three thousand four hundred and  four"
      // Not spelled.
      u"|2147483648=2147483648|1E+20=1E+20",
      [](std::u16string_view number, const std::string& words) {
        EXPECT_EQ(called(u"NumberToWords", number), inQuotes(words));
        EXPECT_EQ(called(u"NumberToWords", doubleOf(Variant(number))), inQuotes(words));
      });
  expectPairs(
      u"NumberToWords",
      u"1,234=one thousand two hundred and  thirty four| 7 =seven|007=and  seven|12.0=and  twelve"
      u"|12321.=one hundred twenty three thousand two hundred and|1e3=one hundred and  three"
      u"|000,000,000,000,000,000,001=and  one|abc=abc| 1,2x = 1,2x ");
  const auto seven = [](auto) { return Variant(std::int32_t{7}); };
  EXPECT_EQ(called(u"NumberToWords", ScriptObject().defaultMember(seven).object()), "\"seven\"");
  EXPECT_EQ(called(u"NumberToWords", Boolean::True), "\"and\"");
  EXPECT_EQ(called(u"NumberToWords", kNan), inQuotes(toUtf8(textOf(Variant(kNan)))));
}

TEST(TextFunctions, Padding) {
  const std::tuple<Variant, Variant, Variant, const char*, const char*> rows[] = {
      {u"7", u"0", 3, "007", "700"},
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
      {u"ab", u"0", kNan, "ab", "ab"}};
  for (const auto& [text, fill, length, left, right] : rows) {
    EXPECT_EQ(called(u"PadLeft", text, fill, length), inQuotes(left));
    EXPECT_EQ(called(u"PadRight", text, fill, length), inQuotes(right));
  }
  EXPECT_EQ(called(u"PadLeft", Variant::null(), u"0", 3), "Empty");
}

TEST(TextFunctions, FileSizes) {
  if (platform::formatNumber(1234.5, 1) != u"1,234.5")
    GTEST_SKIP() << "the locale's numbers are not those of English (United States)";
  forEachPair(
      u"0=0 bytes|1023=1,023 bytes|1024=1.00KB|1152=1.13KB|10239=10.00KB|10239.6=10.0KB"
      u"|10240=10.0KB|102399=100.0KB|102400=100KB|1023999=1,000KB|1024000=0.98MB"
      u"|10239999=9.77MB|10240000=9.8MB|104857600=100MB|1023999999=977MB|1024000000=0.95GB"
      u"|10239999999=9.54GB|10240000000=|1e300=|-1500=-1,500 bytes|-0.4=0 bytes|2.5=3 bytes",
      [](std::u16string_view size, const std::string& text) {
        EXPECT_EQ(called(u"FormatFileSize", size, Boolean::False), inQuotes(text));
      });
  const std::tuple<Variant, Variant, const char*> rows[] = {
      {1536, Boolean::True, "\"1.50KB (1,536 bytes)\""},
      {12345678901234567.0, 1, "\" (12,345,678,901,234,600 bytes)\""},
      {Variant(), Boolean::True, "\"0 bytes (0 bytes)\""},
      {1024, u"false", "\"1.00KB\""},
      {1024, Variant::null(), "\"1.00KB\""},
      {Variant::null(), Boolean::True, "Empty"},
      {u"x", Boolean::True, "Empty"},
      {kInfinity, Boolean::True, "Empty"},
      {-kInfinity, Boolean::True, "Empty"},
      {kNan, Boolean::True, "Empty"}};
  for (const auto& [size, showsBytes, expected] : rows)
    EXPECT_EQ(called(u"FormatFileSize", size, showsBytes), expected);
}

TEST(AppendToUtf8File, AppendsAndKeepsWhatIsThere) {
  const platform::TempFolder folder;
  const std::tuple<std::string, Variant, std::string> rows[] = {
      {"", u"x\u00E9", "x\xC3\xA9"},
      {"\xEF\xBB\xBF.", u"\U0001F600", "\xEF\xBB\xBF.\xF0\x9F\x98\x80"},
      {"a", std::u16string{0xD800, u'.'}, "a\xEF\xBF\xBD."},
      {"a", 12, "a12"},
      {"a", Variant(), "a"}};
  std::u16string path = folder / u"file";
  for (const auto& [before, text, after] : rows) {
    path += u'x';  // another one
    ASSERT_EQ(platform::createFile(path, platform::bytesOf(before)), platform::FileError::None);
    EXPECT_EQ(called(u"AppendToUTF8File", path, text), "True");
    EXPECT_EQ(platform::contentOf(path), after);
  }
}

TEST(AppendToUtf8File, FailuresAreFalseAndChangeNothing) {
  const platform::TempFolder folder;
  const std::u16string path = folder / u"file";
  ASSERT_EQ(platform::createFile(path, platform::bytesOf("kept")), platform::FileError::None);
  for (const Variant& wrong :
       {Variant(folder / u"missing"), Variant(folder / u"missing\\file"), Variant(folder.path()),
        Variant(path + u"\\"), Variant(u""), Variant::null(), arrayOf({})})
    EXPECT_EQ(called(u"AppendToUTF8File", wrong, u"x"), "False");
  EXPECT_EQ(called(u"AppendToUTF8File", path, Variant::null()), "False");
  EXPECT_EQ(platform::listFiles(folder.path()).size(), 1u);
  EXPECT_EQ(pendingError(), 0);
  EXPECT_EQ(platform::contentOf(path), "kept");
}

const std::string kInvalid = "\"### FormatDateTime: Invalid Format ###\"";

Variant date(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
  return Variant::date(dateSerial(year, month, day, hour, minute, second));
}

TEST(FormatDateTime, ReplacesEveryToken) {
  const Variant afternoon = date(2005, 3, 5, 14, 7, 9), midnight = date(2005, 1, 3, 0, 30);
  const Variant noon = date(2005, 12, 31, 12);
  const std::tuple<Variant, const char16_t*, const char*> rows[] = {
      {afternoon, u"#WWWW, #DD #MMMM #YYYY #HH24:#NN:#SS", "Saturday, 05 March 2005 14:07:09"},
      {afternoon, u"#UWWWW #UMMMM #UWWW #UMMM #WWW #MMM", "SATURDAY MARCH SAT MAR Sat Mar"},
      {afternoon, u"#WW #W #S #N #M #D #YY #MM", "S 7 9 7 3 5 05 03"},
      {afternoon, u"#LNTH #UNTH #NTH", "5th 5TH 5th"},
      {afternoon, u"#HH12 #H12 #HH #H24 #H", "02 2 14 14 14"},
      {afternoon, u"#HH12 #H12 #HH #H24 #H #AMPM", "02 2 02 14 14 PM"},
      {midnight, u"#HH12 #H12 #HH #H24 #HH24 #H", "00 0 00 0 00 0"},
      {midnight, u"#HH12 #H12 #HH #H24 #HH24 #H #AMPM", "12 12 12 0 00 0 AM"},
      {midnight, u"#MMMM#MM", "January01"},
      {noon, u"#H12 #HH #AMPM", "12 12 PM"},
      {noon, u"#H12 #HH12", "12 12"},
      {noon, u"", ""},
      {noon, u"#Dd #dd #X # ## #", "31d #dd #X # ## #"},
      {date(100, 1, 1), u"#YYYY #YY #WWWW", "100 00 Friday"},
      {date(9999, 12, 31, 23, 59, 59), u"#UNTH #MMM #YYYY #HH:#NN:#SS", "31ST Dec 9999 23:59:59"},
      {Variant::date(-1.75), u"#DD #H", "29 18"},
      // Tokens that end in what another has left behind it.
      {date(2005, 12, 5), u"#D#MMM", "05ec"},
      {afternoon, u"##UWWWW", "9ATURDAY"},
      {date(2005, 2, 1, 13, 2, 3), u"#UMMM#WWWW#N#MMMM#AMPM #H12 #YY",
       "FEBTuesday2FebruaryPM 1 05"},
      {date(2405, 1, 24, 7), u"#HH#YYYY #H#DD", "0705 724"}};
  for (const auto& [value, format, text] : rows)
    EXPECT_EQ(called(u"FormatDateTime", value, format), inQuotes(text));
  for (const std::string text : {"1st", "2nd", "3rd", "4th", "11st", "12nd", "13rd", "20th"})
    EXPECT_EQ(called(u"FormatDateTime", date(2005, 1, std::stoi(text)), u"#NTH"), inQuotes(text));
}

TEST(FormatDateTime, WhatCountsAsADate) {
  const Variant object(ScriptObject().object());
  const std::u16string_view format = u"#YYYY-#MM-#DD #WWWW #HH:#NN";
  EXPECT_EQ(called(u"FormatDateTime", u"2005-03-05 14:07", format),
            "\"2005-03-05 Saturday 14:07\"");
  for (const Variant& nothing :
       {Variant(45000), Variant(2.5), Variant(), Variant::null(), object, Variant(Boolean::True),
        Variant(Object()), arrayOf({Variant(1)}), Variant::missing()})
    EXPECT_EQ(called(u"FormatDateTime", nothing, format), "\"1899-12-30 Saturday 00:00\"");
  for (const Variant& wrong : {Variant(u"not a date"), Variant(u""), Variant(u"45000"),
                               Variant::date(1e9), Variant::date(-657435), Variant::date(kNan)})
    EXPECT_EQ(called(u"FormatDateTime", wrong, format), kInvalid);
  for (const Variant& wrong : {Variant::null(), object, arrayOf({}), Variant::missing()})
    EXPECT_EQ(called(u"FormatDateTime", date(2005, 3, 5), wrong), kInvalid);
  EXPECT_EQ(pendingError(), 0);
}

TEST(FormatDateTime, TurnsTheFormatIntoTextInPlace) {
  const Owned<StringFunctions> strings = Owned<StringFunctions>::make();
  std::int16_t small = 7;
  Variant day = date(2005, 3, 5), number(12), null = Variant::null();
  const auto format = [&](const VARIANT& variable) {
    return shown(rawCall(strings.object(), u"FormatDateTime", {referenceTo(day), variable}).value);
  };
  EXPECT_EQ(format(referenceTo(number)), "\"12\"");
  EXPECT_EQ(shown(number), "\"12\"");
  EXPECT_EQ(format(referenceTo(null)), kInvalid);
  EXPECT_EQ(null.vt, VT_NULL);
  EXPECT_EQ(day.vt, VT_DATE);
  EXPECT_EQ(format(typedReference(VT_I2, &small)), "\"7\"");
  EXPECT_EQ(small, 7);
}

TEST(IsDateOnly, TellsDatesFromTimes) {
  const auto expect = [](const Variant& value, const std::string& kinds) {
    EXPECT_EQ(called(u"IsTimeOnly", value), kinds.find('t') != kinds.npos ? "True" : "False");
    EXPECT_EQ(called(u"IsDateOnly", value), kinds.find('d') != kinds.npos ? "True" : "False");
  };
  forEachPair(
      u"14:30=t|0:00=td|2005-03-05=d|2005-03-05 0:00=d|2005-03-05 14:30=|12/29/1899 18:00=|abc=",
      expect);
  expect(date(2005, 3, 5), "d");
  expect(date(1899, 12, 30, 6), "t");
  for (const Variant& wrong : {Variant(45000), Variant(), Variant::null(), arrayOf({})})
    expect(wrong, "");
}

}  // namespace
}  // namespace quendal::test
