// JSON text into values: what is read, what is refused, and what is let pass.
#include <gtest/gtest.h>

#include <algorithm>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <random>

#include "platform/stack.h"
#include "tests/functions/json_object.h"
#include "tests/support/small_stack.h"

namespace quendal::test::json {
namespace {

struct Row {
  std::u16string_view text;
  const char* expected;
};

// The descriptions of the decoder's own errors, by a word of each.
std::string shortOutcome(std::u16string_view text) {
  const std::string outcome = outcomeOf([&] { return decode(text); });
  const std::string own = "8732 QUENDAL_CLASSIC_ASP.DLL: ";
  if (!outcome.starts_with(own)) {
    // An error of the platform: the number tells all.
    const std::size_t source = outcome.find(" QUENDAL_REPORTS_ASP: ");
    return source == outcome.npos ? outcome : "error " + outcome.substr(0, source);
  }
  const std::pair<const char*, const char*> descriptions[] = {
      {"ScanOnce(): Parameter is expected to be a valid JSON string. No JSON object could be "
       "scanned.",
       "no value"},
      {"Expecting property name", "no name"},
      {"Expecting : delimiter", "no colon"},
      {"Expecting , delimiter", "no comma"},
      {"Unterminated string starting", "unterminated"},
      {"Invalid control character", "control"},
      {"Invalid escape", "escape"}};
  for (const auto& [description, word] : descriptions)
    if (outcome == own + description) return word;
  return outcome;
}

template <std::size_t N>
void expectAll(const Row (&rows)[N]) {
  for (const Row& row : rows) EXPECT_EQ(shortOutcome(row.text), row.expected) << toUtf8(row.text);
}

TEST(JsonDecode, ReadsEveryKindOfValue) {
  const Row rows[] = {
      {u"{\"a\": [1, 2.5, \"x\"], \"b\": null}", "{a:[1 2.5 'x'] b:Null}"},
      {u" \t\r\n[ true , false,null ] ", "[True False Null]"},
      {u"[]", "[]"},
      {u"[ ]", "[]"},
      {u"{}", "{}"},
      {u"{ }", "{}"},
      {u"\"\"", "''"},
      {u"{\"\":{\"\":[[],{}]}}", "{:{:[[] {}]}}"},
      {u"{\"a\": \n {\"b\": [ {\"c\":1}, {\"c\":2} ]}}", "{a:{b:[{c:1} {c:2}]}}"},
      {u"{\"b\":1,\"a\":2,\"B\":3}", "{b:1 a:2 B:3}"},
      {u"\"a\\u0041\\n\"", "'aA\n'"},
      {u"\"\\u41  \"", "'A'"},
      {u"\"\\\"\\\\\\/\\b\\f\\n\\r\\t\"", "'\"\\/\b\f\n\r\t'"},
      {u"{\"\\u006bey\":1,\"k\\n\":2}", "{key:1 k\n:2}"},
      {u"\"\u00E9\u6771\U0001F600\\ud83D\\uDe00\x7F\"", "'\u00E9\u6771\U0001F600\U0001F600\x7F'"},
      {u"-0.5e2", "-50"},
      {u"[0,-0,7,-12,1.25,1E3,1e+3,25e-1,0e9]", "[0 0 7 -12 1.25 1000 1000 2.5 0]"},
  };
  expectAll(rows);
  const Variant text = decode(u"\"\\uD800 \\u0000\\uFFFF\"");  // lone, NUL and the last one
  EXPECT_TRUE(viewOf(text.bstrVal) == std::u16string_view(u"\xD800 \0\xFFFF", 4));
  const Variant array = decode(u"[7]");
  LONG lower = 1;
  check(SafeArrayGetLBound(array.parray, 1, &lower));
  EXPECT_EQ(lower, 0);
  EXPECT_EQ(array.vt, kVariantArray);
}

TEST(JsonDecode, RefusesWithOneOfAFewDescriptions) {
  const Row rows[] = {
      // Values
      {u"", "no value"},
      {u" \n", "no value"},
      {u"True", "no value"},
      {u"nul", "no value"},
      {u"[fals]", "no value"},
      {u"[Inf]", "no value"},
      {u"[-]", "no value"},
      {u"['x']", "no value"},
      {u"\uFEFF{}", "no value"},
      {u"[\f]", "no value"},
      {u"[\u00A0]", "no value"},
      {u"[\u0661]", "no value"},  // a digit, but not one of numbers
      // Arrays
      {u"[", "no value"},
      {u"[1,", "no value"},
      {u"[1,]", "no value"},
      {u"[\"x\",,]", "no value"},
      {u"[,]", "no value"},
      {u"[1", "no comma"},
      {u"[\"x\"", "no comma"},
      {u"[1 true]", "no comma"},
      {u"[3[4]]", "no comma"},
      {u"[1:2]", "no comma"},
      {u"[1}", "no comma"},
      // Objects
      {u"{", "no name"},
      {u"{a:1}", "no name"},
      {u"{'a':0}", "no name"},
      {u"{1:1}", "no name"},
      {u"{[", "no name"},
      {u"{\"a\":0,}", "no name"},
      {u"{\"a\":\"b\",,\"c\":\"d\"}", "no name"},
      {u"{\"a\" 1}", "no colon"},
      {u"{\"a\"", "no colon"},
      {u"{\"x\", null}", "no colon"},
      {u"{\"a\":", "no value"},
      {u"{\"a\"::\"b\"}", "no value"},
      {u"{\"a\":/**/\"b\"}", "no value"},
      {u"{\"a\":1 \"b\":2}", "no comma"},
      {u"{\"a\":1]", "no comma"},
      // Strings
      {u"\"abc", "unterminated"},
      {u"\"abc\\\"", "unterminated"},
      {u"{\"abc", "unterminated"},
      {u"\"a\tb\"", "control"},
      {u"\"a\nb\"", "control"},
      {std::u16string_view(u"\"a\0b\"", 5), "control"},
      {u"\"\x1F\"", "control"},
      {u"\"\\x41\"", "escape"},
      {u"\"\\U0041\"", "escape"},
      {u"\"\\'\"", "escape"},
      {u"\"\\\u00E9\"", "escape"},
      {u"\"\\", "escape"},
      // Errors of the platform
      {u"{\"a\":1,\"b\":2,\"a\":3}", "error 457"},
      {u"{\"a\":1,\"\\u0061\":", "no value"},  // only a whole member is added
      {u"[1e400]", "error 6"},
      {u"[-1e9999999999999999999999]", "error 6"},
      {u"[0.4e006699999999999999999999999]", "error 6"},
      {u"\"\\u12G4\"", "error 13"},
      {u"\"\\u00A\"", "error 13"},
      {u"\"\\uD800\\u\"", "error 13"},
      {u"\"\\u", "error 13"},
      {u"\"\\u 041\"", "error 13"},
      {u"\"\\u-041\"", "error 13"},
      {u"\"\\u004", "unterminated"},  // what is left is read as it is
  };
  expectAll(rows);
}

TEST(JsonDecode, LetsMistakesPassThatItWasBuiltNotToSee) {
  const Row rows[] = {
      // Nothing is looked at after the first value.
      {u"true garbage", "True"},
      {u"nullx", "Null"},
      {u"{\"a\":1}}", "{a:1}"},
      {u"[1]]", "[1]"},
      {u"[\"\"],", "['']"},
      {u"2@", "2"},
      {u"012", "0"},
      {u"1.", "1"},
      {u"1e+", "1"},
      {u"1.5e", "1.5"},
      // In place of any other value stands the next number in the text, wherever it begins, and as
      // many characters are passed over as it has.
      {u"x12", "12"},
      {u"[x12", "no comma"},  // goes on at the "2"
      {u"[xx12]", "no comma"},
      {u"[xxx,12]", "no comma"},
      {u"[xx,12]", "[12 12]"},
      {u"[x,y,z,7]", "[7 7 7 7]"},
      {u"[ xxxxxxxx , -12.5e1 ]", "no comma"},
      {u"[ xxxxxxx , -12.5e1 ]", "[-125 -125]"},
      {u"[+1]", "no comma"},
      {u"[.5]", "no comma"},
      {u"[,1]", "no comma"},
      {u"[- 1]", "no comma"},
      {u"[--1]", "no comma"},
      {u"--1", "-1"},
      {u"-x5", "5"},
      {u"[a-1]", "no comma"},
      {u"[ab-1]", "no comma"},
      {u"[ab,-1]", "[-1 -1]"},
      {u"[tru,true,12345]", "no comma"},
      {u"[tru,1234]", "no comma"},
      {u"[tru,123]", "[123 123]"},
      {u"{\"a\":x,\"b\":5}", "{a:5 b:5}"},
      {u"\\u0020", "0"},
      {u"[1,]2", "no comma"},
      {u"[1,]]2", "[1 2]"},  // one "]" is passed over for the 2 behind it
      {u"[1,],2", "no comma"},
      {u"[1,],2]", "[1 2 2]"},
  };
  expectAll(rows);
}

TEST(JsonDecode, ReadsOtherArgumentsAsTheirText) {
  EXPECT_EQ(shown(object().call(u"Decode", 2.5)), "2.5");
  EXPECT_EQ(shortOutcome(u"12"), "12");
  EXPECT_EQ(outcomeOf([] { return object().call(u"Decode", Variant::null()); }),
            "94 QUENDAL_REPORTS_ASP: Invalid use of Null");
  EXPECT_TRUE(outcomeOf([] { return object().call(u"Decode", Variant()); }).starts_with("8732 "));
}

TEST(JsonDecode, NumbersAreTheNearestDoubles) {
  const auto expectNearest = [](const std::string& text) {
    double expected = 0;
    std::from_chars(text.data(), text.data() + text.size(), expected);
    const Variant value = decode(fromUtf8(text));
    ASSERT_EQ(value.vt, VT_R8);
    EXPECT_EQ(value.dblVal, expected) << text;
  };
  for (const char* text : {"9007199254740993",
                           "9007199254740993.0",
                           "9007199254740992.5",
                           "9007199254740995e0",
                           "4503599627370496.5",
                           "1e23",
                           "8.41e21",
                           "1.7976931348623157e308",
                           "2.2250738585072011e-308",
                           "4.9e-324",
                           "123456789012345678901234567890",
                           "0.1e1",
                           "9999999999999999999",
                           "18446744073709551615",
                           "1e-27",
                           "1e55",
                           "1e56",
                           "1e-28",
                           "7.2057594037927933e16",
                           "0.000000000000000000000000000000000000000000001",
                           "123.456e78",
                           "1.0e-5",
                           "5e-324"})
    expectNearest(text);
  std::mt19937_64 random(1);
  for (int i = 0; i < 200'000; ++i) {
    const std::string mantissa = std::to_string(random() >> (random() % 64));
    expectNearest((mantissa == "0" ? "1" : mantissa) + "e" +
                  std::to_string(static_cast<int>(random() % 86) - 28));
  }
  // Too small is zero; as many digits as anyone likes.
  EXPECT_EQ(decode(u"1e-400").dblVal, 0);
  EXPECT_EQ(decode(u"0." + std::u16string(500, u'0') + u"1e500").dblVal, 0.1);
  EXPECT_EQ(decode(std::u16string(400, u'9') + u"e-400").dblVal, 1);
  EXPECT_EQ(outcomeOf([] { return decode(std::u16string(400, u'9')); }).substr(0, 2), "6 ");
}

// Every search from the start of the rest would take hours here.
TEST(JsonDecode, WrongValuesBeforeANumberTakeNoLongerThanOthers) {
  std::u16string text = u"[";
  for (int i = 0; i < 1'000'000; ++i) text += u"x,";
  const Variant value = decode(text + u"7]");
  ASSERT_EQ(value.vt, kVariantArray);
  EXPECT_EQ(value.parray->rgsabound[0].cElements, 1'000'001u);
  EXPECT_EQ(outcomeOf([&] { return decode(text); }).substr(0, 5), "8732 ");
}

std::u16string repeated(std::u16string_view piece, std::size_t count) {
  std::u16string text;
  for (std::size_t i = 0; i < count; ++i) text += piece;
  return text;
}

TEST(JsonDecode, NestsAsDeepOnASmallStackAsFitsAndNoDeeper) {
  onSmallStack([] {
    const std::size_t deep = platform::nestingThatFits() * 9 / 10;
    EXPECT_GE(deep, 200u);
    const std::pair<std::u16string_view, std::u16string_view> brackets[] = {
        {u"[", u"]"}, {u"{\"a\":", u"}"}, {u"[{\"a\":", u"}]"}, {u"{\"a\":[[[", u"]]]}"}};
    for (const auto& [open, close] : brackets) {
      const std::size_t levels =
          deep / static_cast<std::size_t>(std::ranges::count_if(
                     open, [](char16_t c) { return c == u'[' || c == u'{'; }));
      const std::u16string text = repeated(open, levels) + u"1" + repeated(close, levels);
      Variant value = decode(text);
      EXPECT_TRUE(viewOf(encode(value).bstrVal) == text);
      value = Variant();
      for (const std::size_t beyond : {4'000, 1'000'000}) {
        const std::u16string tooDeep = repeated(open, beyond) + u"1" + repeated(close, beyond);
        EXPECT_EQ(outcomeOf([&] { return decode(tooDeep); }),
                  "28 QUENDAL_REPORTS_ASP: Out of stack space");
      }
    }
  });
}

TEST(JsonDecode, ManyKeysOfObjectsMayBeForgottenAndComeAgain) {
  std::u16string text = u"[";
  std::string expected = "[";
  for (int round = 0; round < 3; ++round) {
    for (int i = 0; i < 700; ++i) {
      const std::string key = "key" + std::to_string(i * 7);
      text += fromUtf8("{\"" + key + "\":1,\"x\":{\"" + key + "\":2,\"y\":3}},");
      expected += "{" + key + ":1 x:{" + key + ":2 y:3}} ";
    }
  }
  EXPECT_EQ(shown(decode(text + u"0]")), expected + "0]");
  // One object, of more members than the one before, of fewer, and twice the same.
  EXPECT_EQ(shown(decode(u"[{\"a\":1},{\"a\":1,\"b\":2,\"c\":3},{\"a\":1},{\"b\":1}]")),
            "[{a:1} {a:1 b:2 c:3} {a:1} {b:1}]");
  EXPECT_EQ(shortOutcome(u"[{\"a\":1,\"b\":2},{\"a\":1,\"a\":2}]"), "error 457");
}

}  // namespace
}  // namespace quendal::test::json
