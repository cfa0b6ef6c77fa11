// JSON text into values and back, as pages call it.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "base/utf8.h"
#include "core/dictionary.h"
#include "core/dispatch.h"
#include "functions/json/json.h"
#include "platform/stack.h"
#include "tests/core/raw_call.h"
#include "tests/support/outcome.h"
#include "tests/support/script_object.h"
#include "tests/support/text_rows.h"
#include "tests/support/threads.h"

namespace quendal::test::json {
namespace {

const std::string kOwn = "8732 QUENDAL_CLASSIC_ASP.DLL: ";
const std::string kNoValue =
    kOwn +
    "ScanOnce(): Parameter is expected to be a valid JSON string. No JSON object could be scanned.";
const std::string kNoComma = kOwn + "Expecting , delimiter";
const std::string kOverflow = "6 QUENDAL_REPORTS_ASP: Overflow";
const std::string kNoStack = "28 QUENDAL_REPORTS_ASP: Out of stack space";
const std::string kMismatch = "13 QUENDAL_REPORTS_ASP: Type mismatch";

Object object() { return Owned<Json>::make().object(); }
Variant decode(const Variant& text) { return object().call(u"Decode", text); }
Variant encode(const Variant& value) { return object().call(u"Encode", value); }

std::string encoded(const Variant& value) {
  return textOrFailure([&] { return toUtf8(textOf(encode(value))); });
}

/// What a text is read as, written again by the encoder.
std::string decoded(const Variant& text) {
  return textOrFailure([&] { return toUtf8(textOf(encode(decode(text)))); });
}

TEST(JsonDecode, ReadsEveryKindOfValue) {
  const std::pair<std::u16string_view, const char*> rows[] = {
      {uR"({"a": [1, 2.5, "x"], "b": null})", R"({"a":[1,2.5,"x"],"b":null})"},
      {u" \t\r\n[ true , false,null, [ ] , { } ] ", "[true,false,null,[],{}]"},
      {uR"({"":{"":[[],{}]}})", R"({"":{"":[[],{}]}})"},
      {uR"({ "b" : 1 , "a" : [ {"c":1} , {"c":2} ] , "B" : 3 })",
       R"({"b":1,"a":[{"c":1},{"c":2}],"B":3})"},
      // Keys that are alike before or after their escapes are read.
      {uR"([{"ab":1},{"\u0061b":2},{"ab":3},{"a\u0062":4,"\\u0061b":5,"k\n":6}])",
       "[{\"ab\":1},{\"ab\":2},{\"ab\":3},{\"ab\":4,\"\\u0061b\":5,\"k\n\":6}]"},
      {uR"("a\u0041\n\u41  ")", R"("aA\nA")"},
      {uR"("\"\\\/\b\f\n\r\t")", R"("\"\\/\b\f\n\r\t")"},
      {u"\"\u00E9\u6771\U0001F600\\ud83D\\uDe00\x7F\"", "\"\u00E9\u6771\U0001F600\U0001F600\x7F\""},
      {u"[0,-0,-12,1.25,1E3,1e+3,25e-1,0e9,12345678901234567890,-0.5e2]",
       "[0,0,-12,1.25,1000,1000,2.5,0,1.23456789012346E+19,-50]"}};
  for (const auto& [text, expected] : rows) EXPECT_EQ(decoded(text), expected);
  forEachPair(
      // Nothing is looked at after the first value.
      u"true garbage=true|nullx=null|{\"a\":1}}={\"a\":1}|012=0|1.=1|1.5e+=1.5"
      // In place of any other value stands the next number in the text, wherever it begins, and as
      // many characters are passed over as it has.
      u"|x12=12|[xx,12]=[12,12]|[x,y,z,7]=[7,7,7,7]|[ xxxxxxx , -12.5e1 ]=[-125,-125]|--1=-1|-x5=5"
      u"|[tru,123]=[123,123]|{\"a\":x,\"b\":5}={\"a\":5,\"b\":5}|[1,]]2=[1,2]|[1,],2]=[1,2,2]",
      [](std::u16string_view text, const std::string& expected) {
        EXPECT_EQ(decoded(text), expected);
      });

  const Variant text = decode(u"\"\\uD800 \\u0000\\uFFFF\"");  // lone, NUL and the last one
  EXPECT_TRUE(viewOf(text.bstrVal) == std::u16string_view(u"\xD800 \0\xFFFF", 4));
  const Variant array = decode(u"[7]");
  EXPECT_EQ(array.vt, kVariantArray);
  EXPECT_EQ(array.parray->rgsabound[0].lLbound, 0);
  EXPECT_EQ(decoded(2.5), "2.5");  // by its text
  EXPECT_EQ(decoded(Variant::null()), "94 QUENDAL_REPORTS_ASP: Invalid use of Null");
}

TEST(JsonDecode, RefusesWithOneOfAFewDescriptions) {
  const std::u16string_view withNul(u"\"a\0b\"", 5);
  const std::pair<std::string, std::vector<std::u16string_view>> rows[] = {
      {kNoValue, {u"", u" \n", u"True", u"[fals]", u"[-]", u"\uFEFF{}", u"[", u"[\"x\",]"}},
      {kNoValue, {u"{\"a\":", u"{\"a\":1,\"a\":"}},  // only a whole member is added
      // A control, a blank and a digit, but not those of JSON.
      {kNoValue, {u"[\f]", u"[\u00A0]", u"[\u0661]"}},
      {kNoComma, {u"[1", u"[1 true]", u"[1}", u"{\"a\":1 \"b\":2}", u"{\"a\":1]"}},
      // Where fewer or more characters are passed over than stand before a number.
      {kNoComma, {u"[x12", u"[xxx,12]", u"[.5]", u"[a-1]"}},
      {kOwn + "Expecting property name", {u"{", u"{a:1}", u"{\"a\":0,}", u"{\"a\":\"b\",1:2}"}},
      {kOwn + "Expecting : delimiter", {u"{\"a\" 1}", u"{\"a\""}},
      // What is left of an escape is read as it is.
      {kOwn + "Unterminated string starting", {u"\"abc\\\"", u"{\"abc", u"\"\\u004"}},
      {kOwn + "Invalid control character", {u"\"a\tb\"", withNul, u"\"\x1F\""}},
      {kOwn + "Invalid escape", {u"\"\\x41\"", u"\"\\U0041\"", u"\"\\"}},
      {kMismatch, {u"\"\\u12G4\"", u"\"\\u00A\"", u"\"\\u", u"\"\\u 041\""}},
      {"457 QUENDAL_REPORTS_ASP: This key is already associated with an element of this collection",
       {u"{\"a\":1,\"b\":2,\"\\u0061\":3}"}},
      // What is read before a failure is freed; the sanitizers look on.
      {kNoComma, {u"[\"long enough for memory of its own\",{\"key\":[\"x\",{}],\"b\":[1,\"y\" "}}};
  for (const auto& [expected, texts] : rows)
    for (const std::u16string_view text : texts) EXPECT_EQ(decoded(text), expected) << toUtf8(text);
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
  forEachText(
      u"-0|18446744073709551616|9007199254740993.00000000000000000001|8.41e21|4.9e-324|-1e-400"
      u"|1.7976931348623157e308|2.2250738585072011e-308|0e9999999999999999999"
      u"|1e-9999999999999999999",
      [&](std::u16string_view text) { expectNearest(toUtf8(text)); });
  for (const std::string& text : {"0." + zeros + "1e500", "1" + zeros + "e-501", nines + "e-400"})
    expectNearest(text);
  for (const std::string& text : std::vector<std::string>{
           "1e400", "-1e9999999999999999999", "0." + zeros + "1e810", nines, "1" + zeros + "E-100"})
    EXPECT_EQ(decoded(fromUtf8(text)), kOverflow) << text;

  std::mt19937_64 random(1);
  const auto digits = [&] { return std::to_string(random() >> (random() % 64)); };
  for (int i = 0; i < 5'000; ++i) {
    std::string text = (random() % 2 == 0 ? "-" : "") + digits();
    if (random() % 2 == 0) text += "." + digits();
    if (random() % 2 == 0) text += "e" + std::to_string(static_cast<int>(random() % 500) - 250);
    expectNearest(text);
  }
}

std::u16string repeated(std::u16string_view piece, std::size_t count) {
  std::u16string text;
  for (std::size_t i = 0; i < count; ++i) text += piece;
  return text;
}

// Every search from the start of the rest would take hours here.
TEST(JsonDecode, WrongValuesBeforeANumberTakeNoLongerThanOthers) {
  const std::u16string text = u"[" + repeated(u"x,", 1'000'000);
  EXPECT_EQ(decode(text + u"7]").parray->rgsabound[0].cElements, 1'000'001u);
  EXPECT_EQ(decoded(text), kNoValue);
}

TEST(JsonDecode, NestsAsDeepOnASmallStackAsFitsAndNoDeeper) {
  onSmallStack([] {
    const std::size_t deep = platform::nestingThatFits() * 9 / 10;
    EXPECT_GE(deep, 200u);
    const std::tuple<std::u16string_view, std::u16string_view, std::size_t> rows[] = {
        {u"[", u"]", 1}, {u"{\"a\":", u"}", 1}, {u"{\"a\":[[[", u"]]]}", 4}};
    for (const auto& [open, close, levels] : rows) {
      for (const std::size_t count : {deep / levels, std::size_t{4'000}, std::size_t{1'000'000}}) {
        const std::u16string text = repeated(open, count) + u"1" + repeated(close, count);
        if (count < 4'000)
          EXPECT_EQ(decoded(text), toUtf8(text));
        else
          EXPECT_EQ(textOrFailure([&] { return decode(text), std::string(); }), kNoStack);
      }
    }
  });
}

/// Two elements in each of two dimensions, in memory order.
Variant square() {
  SAFEARRAYBOUND bounds[] = {{2, 0}, {2, 5}};
  Variant array = Variant::array(SafeArrayCreate(VT_VARIANT, 2, bounds));
  for (std::int32_t i = 0; i < 4; ++i)
    static_cast<VARIANT*>(array.parray->pvData)[i] = Variant(i).release();
  return array;
}

Variant typedArray(VARTYPE type) { return Variant::array(SafeArrayCreateVector(type, 0, 1), type); }

TEST(JsonEncode, WritesEachKindOfValue) {
  Variant number(7), error = Variant::missing();
  error.scode = errorCode(2042);
  const Variant reference = referenceTo(number);
  const std::pair<Variant, std::string> rows[] = {
      {Variant::null(), "null"},
      {Variant(), "\"\""},
      {Variant(Boolean::True), "true"},
      {Variant(Boolean{1}), "true"},
      {Variant(std::int16_t{-32768}), "-32768"},
      {Variant(std::numeric_limits<std::int32_t>::min()), "-2147483648"},
      {converted(Variant(0.1), VT_R4), "0.1"},
      {converted(Variant(12.5), VT_CY), "\"12.5\""},
      {converted(Variant(-7.25), VT_DECIMAL), "\"-7.25\""},
      {converted(Variant(200), VT_UI1), "\"200\""},
      {Variant::date(0.5), "\"" + toUtf8(textOf(Variant::date(0.5))) + "\""},
      {Variant::missing(), "\"Error 448\""},
      {error, "\"Error 2042\""},
      {reference, "7"},
      {Variant::array(nullptr), "[]"},
      {arrayOf({number, Boolean::False, arrayOf({Variant::null()}), arrayOf({}), reference}),
       "[7,false,[null],[],7]"},
      {square(), "[0,1,2,3]"},
      {typedArray(VT_BSTR), kMismatch},
      {arrayOf({typedArray(VT_UI1)}), kMismatch},
      {dictionaryOf({}).object(), "{}"},
      {dictionaryOf({{u"b", number},
                     {u"a\"\n", u"\n"},  // no escapes in keys
                     {Variant(1.5), dictionaryOf({{u"", Variant()}}).object()},
                     {Variant(std::int16_t{2}), arrayOf({dictionaryOf({}).object()})}})
           .object(),
       "{\"b\":7,\"a\"\n\":\"\\n\",\"1.5\":{\"\":\"\"},\"2\":[{}]}"},
      {u"\"\\/\b\f\r\n\t", R"("\"\\/\b\f\r\n\t")"},
      {std::u16string_view(u"\0\x01\x0F\x10\x1B\x1F\x7F", 7),
       "\"\\u0000\\u0001\\u000F\\u0010\\u001B\\u001F\x7F\""},
      {arrayOf({999999999999999.0, 1e15, -1e15, 1.0 / 3, -0.0}),
       "[999999999999999,1E+15,-1E+15,0.333333333333333,0]"},
      {std::u16string(31, u'a') + u'"' + std::u16string(64, u'b') + u"\n",
       '"' + std::string(31, 'a') + "\\\"" + std::string(64, 'b') + "\\n\""},
      {u"a\n\nb\u00E9\u6771\U0001F600", "\"a\\n\\nb\u00E9\u6771\U0001F600\""}};
  for (const auto& [value, expected] : rows) EXPECT_EQ(encoded(value), expected);
  const Variant lone = encode(std::u16string(1, 0xD800));
  EXPECT_TRUE(viewOf(lone.bstrVal) == (std::u16string(u"\"") + char16_t{0xD800} + u"\""));
  EXPECT_EQ(encoded(std::u16string(1000, u'\x01')).size(), 6002u);
}

TEST(JsonEncode, RefusesOtherObjectsByName) {
  const auto refusal = [](const std::string& name) {
    return kOwn + "(DLL) JSON does not support " + name + " object types yet.";
  };
  EXPECT_EQ(encoded(Object()), refusal("Nothing"));
  const Variant other(ScriptObject().className(u"Folder").object());
  EXPECT_EQ(encoded(arrayOf({u"x", dictionaryOf({{u"a", other}}).object()})), refusal("Folder"));
  // A dictionary that is only reached by name.
  const Variant inner = dictionaryOf({{u"a", arrayOf({Variant(1.5)})},
                                      {Variant(std::int16_t{2}), dictionaryOf({}).object()}})
                            .object();
  const Object kept = Object::from(inner);
  const Object reached =
      ScriptObject()
          .className(u"Dictionary")
          .member(u"Keys", [&](auto) { return kept.call(u"Keys"); })
          .member(u"Item", [&](auto key) { return kept.get(u"Item", Variant::copyOf(key[0])); })
          .object();
  EXPECT_EQ(encoded(reached), "{\"a\":[1.5],\"2\":{}}");
}

/// A cursor over rows of two fields, which notes how it is called.
struct Cursor {
  std::int32_t state = 1;
  std::vector<std::pair<Variant, Variant>> rows = {};
  std::function<Variant()> recordCount = [this] { return Variant(int(rows.size())); };
  bool refusesMoves = false;
  std::size_t row = 0;
  std::string calls = "";

  Variant object() {
    ScriptObject cursor;
    const auto member = [&](const char16_t* name, auto value) {
      cursor.member(name, [this, name, value](auto) {
        calls += toUtf8(name) + " ";
        return Variant(value());
      });
    };
    cursor.value(u"State", Variant(state));
    member(u"RecordCount", recordCount);
    member(u"BOF", [this] { return booleanOf(rows.empty()); });
    member(u"EOF", [this] { return booleanOf(row >= rows.size()); });
    member(u"MoveFirst", [this] {
      if (refusesMoves) throw AutomationError(3021, u"no rows", u"cursor");
      row = 0;
      return Variant();
    });
    member(u"MoveNext", [this] { return Variant(static_cast<std::int32_t>(++row)); });
    member(u"Fields", [this] {
      const auto field = [](const char16_t* name, const Variant& value) {
        return Variant(
            ScriptObject().value(u"Name", Variant(name)).value(u"Value", value).object());
      };
      return ScriptObject()
          .elements({field(u"id", rows[row].first), field(u"na\"me", rows[row].second)})
          .object();
    });
    return Variant(cursor.className(u"Recordset").object());
  }
};

const std::string kEmptyCursor = "{\"state\": \"open\",\"recordCount\": 0,\"rows\": []}";

TEST(JsonEncode, ReadsCursorsRowByRow) {
  Cursor open{1, {{Variant(1), u"a\n"}, {Variant(2.5), Variant::null()}}};
  EXPECT_EQ(encoded(arrayOf({open.object()})),
            "[{\"state\": \"open\",\"recordCount\": 2,\"rows\": ["
            "{\"id\":1,\"na\"me\":\"a\\n\"},{\"id\":2.5,\"na\"me\":null}]}]");
  EXPECT_EQ(open.calls,
            "RecordCount MoveFirst BOF EOF EOF Fields MoveNext EOF Fields MoveNext EOF MoveFirst ");
  for (const VARTYPE type : {VT_I4, VT_UI2, VT_UI4, VT_I8, VT_UI8, VT_INT}) {
    Cursor empty{.recordCount = [type] { return converted(Variant(0), type); }};
    EXPECT_EQ(encoded(empty.object()), kEmptyCursor);
    EXPECT_EQ(empty.calls, "RecordCount MoveFirst BOF EOF MoveFirst ");
  }
  Cursor refuses{.refusesMoves = true};
  EXPECT_EQ(encoded(refuses.object()), "3021 cursor: no rows");
  const std::pair<std::int32_t, const char*> states[] = {
      {0, "{\"state\": \"closed\"}"}, {4, "{\"state\": \"executing\"}"}, {2, "{}"}};
  for (const auto& [state, expected] : states) {
    Cursor cursor{state};
    EXPECT_EQ(encoded(cursor.object()), expected);
    EXPECT_EQ(cursor.calls, "");
  }
  Cursor broken{1, {{u"x", Variant(Object())}}};
  EXPECT_TRUE(encoded(broken.object()).starts_with("8732 "));
}

TEST(JsonEncode, WhatACursorDoesToItsDictionaryDoesNoHarm) {
  const Dictionary outer = Dictionary::create();
  Cursor cursor{.recordCount = [&] {
    outer.removeAll();
    for (int i = 0; i < 100; ++i) outer.set(Variant(i), u"new");
    return Variant(0);
  }};
  const Variant recordset = cursor.object();
  outer.add(u"a", recordset);
  outer.add(u"b", u"old");
  EXPECT_TRUE(encoded(outer.object()).starts_with("{\"a\":" + kEmptyCursor));

  // Inside arrays, which are held while the cursor is asked, and inside ones that only their
  // container holds when an error ends the encoding.
  outer.removeAll();
  outer.add(Variant(1), arrayOf({arrayOf({recordset})}));
  outer.add(u"b", arrayOf({recordset}));
  static_cast<void>(encoded(outer.object()));
  outer.removeAll();
  outer.add(Variant(1), arrayOf({arrayOf({Variant(Object()), u"text"})}));
  EXPECT_TRUE(encoded(outer.object()).starts_with("8732 "));
}

TEST(JsonEncode, WhatHoldsItselfEndsWithAnError) {
  onSmallStack([] {
    const Dictionary dictionary = Dictionary::create();
    dictionary.add(u"self", Variant(dictionary.object()));
    EXPECT_EQ(encoded(dictionary.object()), kNoStack);
    dictionary.removeAll();
  });
  Variant self;
  Cursor cursor{.recordCount = [&self] { return self; }};
  self = cursor.object();
  EXPECT_EQ(encoded(self), kNoStack);
}

}  // namespace
}  // namespace quendal::test::json
