// Values into JSON text.
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include "tests/functions/json_object.h"
#include "tests/support/script_object.h"
#include "tests/support/threads.h"

namespace quendal::test::json {
namespace {

Variant ofType(VARTYPE type, const Variant& value) { return converted(value, type); }

Variant decimal(std::uint64_t negated, BYTE scale) {
  Variant value;
  value.decVal.Lo64 = negated;
  value.decVal.scale = scale;
  value.decVal.sign = 0x80;
  value.vt = VT_DECIMAL;
  return value;
}

Variant errorValue(SCODE code) {
  Variant value = Variant::missing();
  value.scode = code;
  return value;
}

/// Two elements in each of two dimensions, in memory order.
Variant square(VARTYPE type = VT_VARIANT) {
  SAFEARRAYBOUND bounds[] = {{2, 0}, {2, 5}};
  Variant array = Variant::array(SafeArrayCreate(type, 2, bounds), type);
  if (type != VT_VARIANT) return array;
  void* data = nullptr;
  check(SafeArrayAccessData(array.parray, &data));
  for (std::int32_t i = 0; i < 4; ++i) static_cast<VARIANT*>(data)[i] = Variant(i).release();
  check(SafeArrayUnaccessData(array.parray));
  return array;
}

Variant dictionaryOf(std::initializer_list<std::pair<Variant, Variant>> entries) {
  const Dictionary dictionary = Dictionary::create();
  for (const auto& [key, item] : entries) dictionary.add(key, item);
  return Variant(dictionary.object());
}

std::string encoded(const Variant& value) {
  const std::string outcome = outcomeOf([&] { return encode(value); });
  return outcome.starts_with("'") ? outcome.substr(1, outcome.size() - 2) : outcome;
}

TEST(JsonEncode, WritesEachKindOfValue) {
  const Variant number(std::int32_t{7});
  Variant reference;
  reference.vt = kVariantReference;
  reference.pvarVal = const_cast<Variant*>(&number);
  const struct {
    Variant value;
    std::string expected;
  } rows[] = {
      {Variant::null(), "null"},
      {Variant(), "\"\""},
      {Variant(Boolean::True), "true"},
      {Variant(Boolean::False), "false"},
      {Variant(Boolean{1}), "true"},
      {Variant(std::int16_t{-32768}), "-32768"},
      {Variant(std::numeric_limits<std::int32_t>::min()), "-2147483648"},
      {ofType(VT_R4, Variant(0.1)), "0.1"},
      {ofType(VT_CY, Variant(12.5)), "\"12.5\""},
      {decimal(725, 2), "\"-7.25\""},
      {ofType(VT_UI1, Variant(std::int16_t{200})), "\"200\""},
      {Variant::date(0.5), "\"" + toUtf8(textOf(Variant::date(0.5))) + "\""},
      {Variant::missing(), "\"Error 448\""},
      {errorValue(errorCode(2042)), "\"Error 2042\""},
      {reference, "7"},
      {arrayOf({}), "[]"},
      {Variant::array(nullptr), "[]"},
      {arrayOf({number, Variant(u"x"), arrayOf({Variant::null()}), reference}),
       "[7,\"x\",[null],7]"},
      {square(), "[0,1,2,3]"},
      {square(VT_BSTR), "13 QUENDAL_REPORTS_ASP: Type mismatch"},
      {Variant::array(SafeArrayCreateVector(VT_I4, 0, 1), VT_I4),
       "13 QUENDAL_REPORTS_ASP: Type mismatch"},
      {arrayOf({Variant::array(SafeArrayCreateVector(VT_UI1, 0, 2), VT_UI1)}),
       "13 QUENDAL_REPORTS_ASP: Type mismatch"},
      {dictionaryOf({}), "{}"},
      {dictionaryOf({{Variant(u"b"), number},
                     {Variant(u"a\"\n"), Variant(u"\n")},  // no escapes in keys
                     {Variant(1.5), dictionaryOf({{Variant(u""), Variant()}})},
                     {Variant(std::int16_t{2}), arrayOf({dictionaryOf({})})}}),
       "{\"b\":7,\"a\"\n\":\"\\n\",\"1.5\":{\"\":\"\"},\"2\":[{}]}"},
  };
  for (const auto& row : rows) EXPECT_EQ(encoded(row.value), row.expected);
}

// Whatever the way to it: the text is that of the platform's own conversion, with "." for ",".
TEST(JsonEncode, NumbersHaveTheirOrdinaryText) {
  std::vector<double> values = {
      0.0,    -0.0, 1.0 / 3,  0.1 + 0.2,           999999999999999.0, 1e15,
      1.5e20, 1e-5, 4.9e-324, 0.99999999999999994, 123456789012345.6};
  for (double value = 1; value < 1e18; value *= 7) {
    values.push_back(-value + 1);
    values.push_back(value / 1024);
  }
  for (const double value : values) {
    std::string expected = toUtf8(textOf(Variant(value)));
    std::ranges::replace(expected, ',', '.');
    EXPECT_EQ(encoded(Variant(value)), expected);
  }
}

TEST(JsonEncode, EscapesWhatStringsMayNotHold) {
  const struct {
    std::u16string_view text;
    const char* expected;
  } rows[] = {
      {u"\"\\/\b\f\r\n\t", R"("\"\\/\b\f\r\n\t")"},
      {std::u16string_view(u"\0\x01\x0F\x10\x1B\x1F\x7F", 7),
       "\"\\u0000\\u0001\\u000F\\u0010\\u001B\\u001F\x7F\""},
      {u"\u00E9\u6771\U0001F600", "\"\u00E9\u6771\U0001F600\""},
  };
  for (const auto& row : rows) EXPECT_EQ(encoded(Variant(row.text)), row.expected);
  const Variant lone = encode(Variant(std::u16string(1, 0xD800)));
  EXPECT_TRUE(viewOf(lone.bstrVal) == (std::u16string(u"\"") + char16_t{0xD800} + u"\""));

  EXPECT_EQ(encoded(Variant(u"a\n\nb\"")), "\"a\\n\\nb\\\"\"");
  EXPECT_EQ(encoded(Variant(std::u16string(1000, u'\x01'))).size(), 6002u);
}

TEST(JsonEncode, RefusesOtherObjectsByName) {
  const auto refusal = [](const char* name) {
    return std::string("8732 QUENDAL_CLASSIC_ASP.DLL: (DLL) JSON does not support ") + name +
           " object types yet.";
  };
  EXPECT_EQ(encoded(Variant(Object())), refusal("Nothing"));
  const Variant other(ScriptObject().className(u"Folder").object());
  EXPECT_EQ(encoded(arrayOf({Variant(u"x"), dictionaryOf({{Variant(u"a"), other}})})),
            refusal("Folder"));
  // A dictionary that is only reached by name.
  const Object inner = Object::from(dictionaryOf(
      {{Variant(u"a"), arrayOf({Variant(1.5)})}, {Variant(std::int16_t{2}), dictionaryOf({})}}));
  const Object outer =
      ScriptObject()
          .className(u"Dictionary")
          .member(u"Keys", [&](auto) { return inner.call(u"Keys"); })
          .member(u"Item", [&](auto key) { return inner.get(u"Item", Variant::copyOf(key[0])); })
          .object();
  EXPECT_EQ(encoded(Variant(outer)), "{\"a\":[1.5],\"2\":{}}");
  const Object odd = ScriptObject()
                         .className(u"Dictionary")
                         .member(u"Keys", [](auto) { return arrayOf({Variant::null()}); })
                         .member(u"Item", [](auto) { return Variant(); })
                         .object();
  EXPECT_EQ(encoded(Variant(odd)), "94 QUENDAL_REPORTS_ASP: Invalid use of Null");
}

/// A cursor over rows of two fields, which notes how it is called.
struct Cursor {
  std::int32_t state = 1;
  std::vector<std::pair<Variant, Variant>> rows = {};
  bool refusesMoves = false;
  VARTYPE countType = VT_I4;
  std::size_t row = 0;
  std::string calls = "";

  Variant object() {
    ScriptObject cursor;
    cursor.className(u"Recordset");
    const auto member = [&](const char16_t* name, auto value) {
      cursor.member(name, [this, name, value](auto) {
        calls += toUtf8(name) + " ";
        return Variant(value());
      });
    };
    cursor.value(u"State", Variant(state));
    member(u"RecordCount", [this] {
      return converted(Variant(static_cast<std::int32_t>(rows.size())), countType);
    });
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
    return Variant(cursor.object());
  }
};

TEST(JsonEncode, ReadsCursorsRowByRow) {
  Cursor open{1, {{Variant(std::int32_t{1}), Variant(u"a\n")}, {Variant(2.5), Variant::null()}}};
  EXPECT_EQ(encoded(arrayOf({open.object()})),
            "[{\"state\": \"open\",\"recordCount\": 2,\"rows\": ["
            "{\"id\":1,\"na\"me\":\"a\\n\"},{\"id\":2.5,\"na\"me\":null}]}]");
  EXPECT_EQ(open.calls,
            "RecordCount MoveFirst BOF EOF EOF Fields MoveNext EOF Fields MoveNext EOF MoveFirst ");

  for (const VARTYPE type : {VT_I4, VT_UI2, VT_UI4, VT_I8, VT_UI8, VT_INT}) {
    Cursor empty{.countType = type};
    EXPECT_EQ(encoded(empty.object()), "{\"state\": \"open\",\"recordCount\": 0,\"rows\": []}");
    EXPECT_EQ(empty.calls, "RecordCount MoveFirst BOF EOF MoveFirst ");
    empty.refusesMoves = true;
    EXPECT_EQ(encoded(empty.object()), "3021 cursor: no rows");
  }
  const std::pair<std::int32_t, const char*> states[] = {
      {0, "{\"state\": \"closed\"}"}, {4, "{\"state\": \"executing\"}"}, {2, "{}"}};
  for (const auto& [state, expected] : states) {
    Cursor cursor{state};
    EXPECT_EQ(encoded(cursor.object()), expected);
    EXPECT_EQ(cursor.calls, "");
  }
  Cursor broken{1, {{Variant(u"x"), Variant(Object())}}};
  EXPECT_TRUE(encoded(broken.object()).starts_with("8732 "));
}

TEST(JsonEncode, WhatACursorDoesToItsDictionaryDoesNoHarm) {
  const Dictionary outer = Dictionary::create();
  const Object cursor = ScriptObject()
                            .className(u"Recordset")
                            .value(u"State", Variant(std::int32_t{1}))
                            .member(u"RecordCount",
                                    [&](auto) {
                                      outer.removeAll();
                                      for (int i = 0; i < 100; ++i)
                                        outer.set(Variant(i), Variant(u"new"));
                                      return Variant(std::int32_t{0});
                                    })
                            .member(u"MoveFirst", [](auto) { return Variant(); })
                            .value(u"BOF", Variant(Boolean::True))
                            .value(u"EOF", Variant(Boolean::True))
                            .object();
  const Variant recordset(cursor);
  outer.add(Variant(u"a"), recordset);
  outer.add(Variant(u"b"), Variant(u"old"));
  EXPECT_TRUE(encoded(Variant(outer.object()))
                  .starts_with("{\"a\":{\"state\": \"open\",\"recordCount\": 0,\"rows\": []}"));

  // Inside arrays, which are held while the cursor is asked, and inside ones that only their
  // container holds when an error ends the encoding.
  outer.removeAll();
  outer.add(Variant(1), arrayOf({arrayOf({recordset})}));
  outer.add(Variant(u"b"), arrayOf({recordset}));
  static_cast<void>(encoded(Variant(outer.object())));
  outer.removeAll();
  outer.add(Variant(1), arrayOf({arrayOf({Variant(Object()), Variant(u"text")})}));
  EXPECT_TRUE(encoded(Variant(outer.object())).starts_with("8732 "));
}

TEST(JsonEncode, WhatHoldsItselfEndsWithAnError) {
  const char* const expected = "28 QUENDAL_REPORTS_ASP: Out of stack space";
  onSmallStack([=] {
    const Dictionary dictionary = Dictionary::create();
    dictionary.add(Variant(u"self"), Variant(dictionary.object()));
    EXPECT_EQ(encoded(Variant(dictionary.object())), expected);
    dictionary.removeAll();
  });
  const auto holder = std::make_shared<Variant>();
  const Object cursor = ScriptObject()
                            .className(u"Recordset")
                            .value(u"State", Variant(std::int32_t{1}))
                            .member(u"RecordCount", [holder](auto) { return *holder; })
                            .object();
  *holder = Variant(cursor);
  EXPECT_EQ(encoded(Variant(cursor)), expected);
  *holder = Variant();
}

}  // namespace
}  // namespace quendal::test::json
