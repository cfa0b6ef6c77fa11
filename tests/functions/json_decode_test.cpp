// JSON text into values: what is read, what is refused, and what is let pass.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <random>

#include "platform/stack.h"
#include "tests/functions/json_object.h"
#include "tests/support/threads.h"

namespace quendal::test::json {
namespace {

struct Row {
  std::u16string_view text;
  const char* expected;
};

// The descriptions of the decoder's own errors, by a word of each; the platform's by their number.
std::string shortOutcome(std::u16string_view text) {
  const std::string outcome = outcomeOf([&] { return decode(text); });
  const std::string own = "8732 QUENDAL_CLASSIC_ASP.DLL: ";
  if (!outcome.starts_with(own)) {
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
      {u"[ ]", "[]"},
      {u"{ }", "{}"},
      {u"{\"\":{\"\":[[],{}]}}", "{:{:[[] {}]}}"},
      {u"{ \"b\" : 1 , \"a\" : [ {\"c\":1} , {\"c\":2} ] , \"B\" : 3 }",
       "{b:1 a:[{c:1} {c:2}] B:3}"},
      // Keys that are alike before or after their escapes are read.
      {u"[{\"ab\":1},{\"\\u0061b\":2},{\"ab\":3},{\"a\\u0062\":4,\"\\\\u0061b\":5,\"k\\n\":6}]",
       "[{ab:1} {ab:2} {ab:3} {ab:4 \\u0061b:5 k\n:6}]"},
      {u"[[1,[2,{\"a\":[3]}],4],5]", "[[1 [2 {a:[3]}] 4] 5]"},
      {u"\"a\\u0041\\n\"", "'aA\n'"},
      {u"\"\\u41  \"", "'A'"},
      {u"\"\\\"\\\\\\/\\b\\f\\n\\r\\t\"", "'\"\\/\b\f\n\r\t'"},
      {u"\"\u00E9\u6771\U0001F600\\ud83D\\uDe00\x7F\"", "'\u00E9\u6771\U0001F600\U0001F600\x7F'"},
      {u"[0,-0,-12,1.25,1E3,1e+3,25e-1,0e9,12345678901234567890,-0.5e2]",
       "[0 0 -12 1.25 1000 1000 2.5 0 1.23456789012346E+19 -50]"},
      {u"2.5", "2.5"},
  };
  expectAll(rows);
  const Variant text = decode(u"\"\\uD800 \\u0000\\uFFFF\"");  // lone, NUL and the last one
  EXPECT_TRUE(viewOf(text.bstrVal) == std::u16string_view(u"\xD800 \0\xFFFF", 4));
  const Variant array = decode(u"[7]");
  EXPECT_EQ(array.vt, kVariantArray);
  EXPECT_EQ(array.parray->rgsabound[0].lLbound, 0);
  EXPECT_EQ(outcomeOf([] { return object().call(u"Decode", 2.5); }), "2.5");  // by its text
  EXPECT_EQ(outcomeOf([] { return object().call(u"Decode", Variant::null()); }),
            "94 QUENDAL_REPORTS_ASP: Invalid use of Null");
}

TEST(JsonDecode, RefusesWithOneOfAFewDescriptions) {
  const Row rows[] = {
      // Values
      {u"", "no value"},
      {u" \n", "no value"},
      {u"True", "no value"},
      {u"[fals]", "no value"},
      {u"[-]", "no value"},
      {u"\uFEFF{}", "no value"},
      {u"[\f]", "no value"},      // a control that is no blank
      {u"[\u00A0]", "no value"},  // a blank, but not one of JSON
      {u"[\u0661]", "no value"},  // a digit, but not one of numbers
      // Arrays
      {u"[", "no value"},
      {u"[\"x\",]", "no value"},
      {u"[1", "no comma"},
      {u"[1 true]", "no comma"},
      {u"[1}", "no comma"},
      // Objects
      {u"{", "no name"},
      {u"{a:1}", "no name"},
      {u"{\"a\":0,}", "no name"},
      {u"{\"a\":\"b\",1:2}", "no name"},
      {u"{\"a\" 1}", "no colon"},
      {u"{\"a\"", "no colon"},
      {u"{\"a\":", "no value"},
      {u"{\"a\":1 \"b\":2}", "no comma"},
      {u"{\"a\":1]", "no comma"},
      // Strings
      {u"\"abc\\\"", "unterminated"},
      {u"{\"abc", "unterminated"},
      {u"\"a\tb\"", "control"},
      {std::u16string_view(u"\"a\0b\"", 5), "control"},
      {u"\"\x1F\"", "control"},
      {u"\"\\x41\"", "escape"},
      {u"\"\\U0041\"", "escape"},
      {u"\"\\", "escape"},
      // Errors of the platform
      {u"{\"a\":1,\"b\":2,\"\\u0061\":3}", "error 457"},
      {u"{\"a\":1,\"a\":", "no value"},  // only a whole member is added
      {u"\"\\u12G4\"", "error 13"},
      {u"\"\\u00A\"", "error 13"},
      {u"\"\\u", "error 13"},
      {u"\"\\u 041\"", "error 13"},
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
      {u"012", "0"},
      {u"1.", "1"},
      {u"1e+", "1"},
      {u"1.5e", "1.5"},
      // In place of any other value stands the next number in the text, wherever it begins, and as
      // many characters are passed over as it has.
      {u"x12", "12"},
      {u"[x12", "no comma"},  // goes on at the "2"
      {u"[xx,12]", "[12 12]"},
      {u"[xxx,12]", "no comma"},
      {u"[x,y,z,7]", "[7 7 7 7]"},
      {u"[ xxxxxxx , -12.5e1 ]", "[-125 -125]"},
      {u"[.5]", "no comma"},
      {u"--1", "-1"},
      {u"-x5", "5"},
      {u"[a-1]", "no comma"},
      {u"[tru,123]", "[123 123]"},
      {u"{\"a\":x,\"b\":5}", "{a:5 b:5}"},
      {u"[1,]]2", "[1 2]"},  // one "]" is passed over for the 2 behind it
      {u"[1,],2]", "[1 2 2]"},
  };
  expectAll(rows);
}

TEST(JsonDecode, NumbersAreTheNearestDoubles) {
  const auto expectNearest = [](const std::string& text) {
    const Variant value = decode(fromUtf8(text));
    ASSERT_EQ(value.vt, VT_R8);
    const double expected = std::strtod(text.c_str(), nullptr);
    EXPECT_EQ(value.dblVal, expected) << text;
    EXPECT_EQ(std::signbit(value.dblVal), std::signbit(expected)) << text;
  };
  const std::string nines(400, '9'), zeros(500, '0');
  for (const std::string& text :
       {std::string("-0"), std::string("999999999999999"), std::string("9007199254740993"),
        std::string("18446744073709551616"), std::string("12345678901234567890"),
        std::string("9007199254740993.00000000000000000001"), std::string("8.41e21"),
        std::string("1.7976931348623157e308"), std::string("2.2250738585072011e-308"),
        std::string("4.9e-324"), std::string("-1e-400"), std::string("0e9999999999999999999"),
        std::string("1e-9999999999999999999"), "0." + zeros + "1e500", "1" + zeros + "e-501",
        nines + "e-400", "0." + zeros + "1"})
    expectNearest(text);
  for (const std::string& text : {std::string("1e400"), std::string("-1e9999999999999999999"),
                                  "0." + zeros + "1e810", nines, "1" + zeros + "E-100"})
    EXPECT_EQ(shortOutcome(fromUtf8(text)), "error 6") << text;

  std::mt19937_64 random(1);
  const auto digits = [&] { return std::to_string(random() >> (random() % 64)); };
  for (int i = 0; i < 5'000; ++i) {
    std::string text = (random() % 2 == 0 ? "-" : "") + digits();
    if (random() % 2 == 0) text += "." + digits();
    if (random() % 2 == 0) text += "e" + std::to_string(static_cast<int>(random() % 500) - 250);
    expectNearest(text);
  }
}

// Every search from the start of the rest would take hours here.
TEST(JsonDecode, WrongValuesBeforeANumberTakeNoLongerThanOthers) {
  std::u16string text = u"[";
  for (int i = 0; i < 1'000'000; ++i) text += u"x,";
  const Variant value = decode(text + u"7]");
  ASSERT_EQ(value.vt, kVariantArray);
  EXPECT_EQ(value.parray->rgsabound[0].cElements, 1'000'001u);
  EXPECT_EQ(shortOutcome(text), "no value");
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
        {u"[", u"]"}, {u"{\"a\":", u"}"}, {u"{\"a\":[[[", u"]]]}"}};
    for (const auto& [open, close] : brackets) {
      const std::size_t levels =
          deep / static_cast<std::size_t>(std::ranges::count_if(
                     open, [](char16_t c) { return c == u'[' || c == u'{'; }));
      const std::u16string text = repeated(open, levels) + u"1" + repeated(close, levels);
      Variant value = decode(text);
      EXPECT_TRUE(viewOf(encode(value).bstrVal) == text);
      value = Variant();
      for (const std::size_t beyond : {4'000, 1'000'000})
        EXPECT_EQ(shortOutcome(repeated(open, beyond) + u"1" + repeated(close, beyond)),
                  "error 28");
    }
  });
}

// What is read before a failure is freed; the sanitizers look on.
TEST(JsonDecode, ForgetsWhatItHasReadWhenItFails) {
  EXPECT_EQ(
      shortOutcome(u"[\"long enough for memory of its own\",{\"key\":[\"x\",{}],\"b\":[1,\"y\" "),
      "no comma");
}

}  // namespace
}  // namespace quendal::test::json
