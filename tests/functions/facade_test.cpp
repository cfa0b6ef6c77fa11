// `FUNCTIONS`: its helpers, Sleep, Max and Min.
#include <gtest/gtest.h>

#include <chrono>
#include <tuple>

#include "functions/functions.h"
#include "functions/pumping_wait.h"
#include "tests/arrays/page_arrays.h"
#include "tests/core/raw_call.h"
#include "tests/support/script_object.h"

namespace quendal::test {
namespace {

TEST(Facade, HandsOutTheSameHelpersEveryTime) {
  Object facade = Owned<Functions>::make().object();
  for (const char16_t* name : {u"JSON", u"Concat", u"STRINGS", u"ARRAYS", u"Dictionaries", u"OS"}) {
    const Object first = Object::from(facade.get(name));
    EXPECT_TRUE(first);
    EXPECT_EQ(first.dispatch(), facade.get(name).pdispVal);
  }
  const Object arrays = Object::from(facade.get(u"ARRAYS"));
  facade = {};
  EXPECT_EQ(int32Of(arrays.call(u"GetUBound", of(u"abc"))), 2);  // outlives the facade
}

TEST(Facade, MaxAndMinCompareAsTheHostDoes) {
  const Object facade = Owned<Functions>::make().object();
  const auto number = [](std::int16_t value) { return Variant(value); };
  const Variant array = of(u"123"), plain(ScriptObject().object());
  const Variant five(ScriptObject().defaultMember([=](auto) { return number(5); }).object());
  const std::tuple<std::vector<Variant>, const char*, const char*, VARTYPE> rows[] = {
      {{}, "Null", "Null", VT_NULL},
      {{number(3), number(7), number(5)}, "7", "3", VT_I2},
      {{number(2), u"abc"}, "abc", "2", VT_BSTR},
      {{u"b", u"B", u"a"}, "b", "B", VT_BSTR},
      {{Variant::null(), number(5)}, "Null", "Null", VT_NULL},
      {{number(5), Variant::null(), number(9)}, "9", "5", VT_I2},
      {{Variant(), number(-1)}, "~", "-1", VT_EMPTY},
      {{number(1), Variant(1.0)}, "1", "1", VT_I2},  // the first of equals
      {{array}, "~", "~", VT_EMPTY},
      {{of(nullptr)}, "~", "~", VT_EMPTY},
      {{of(u"12", VT_I4)}, "[1 2]", "[1 2]", VT_ARRAY | VT_I4},
      // What cannot be compared becomes the current value, and so does what comes after it.
      {{number(9), array}, "[1 2 3]", "[1 2 3]", kVariantArray},
      {{number(9), plain, number(1)}, "1", "1", VT_I2},
      {{number(9), plain}, "?", "?", VT_DISPATCH},
      {{number(4), five}, "?", "4", VT_DISPATCH}};
  for (const auto& [values, max, min, maxType] : rows) {
    std::vector<Variant> variables = values;
    std::vector<VARIANT> references;
    for (Variant& variable : variables) references.push_back(referenceTo(variable));
    for (const auto& arguments : {std::vector<VARIANT>(values.begin(), values.end()), references}) {
      const Outcome result = rawCall(facade, u"Max", arguments);
      EXPECT_EQ(shownArray(result.value), max);
      EXPECT_EQ(result.value.vt, maxType);
      EXPECT_EQ(shownArray(rawCall(facade, u"Min", arguments).value), min);
    }
  }
}

// How long it takes at most is up to the machine; what is no time must only not wait without end.
TEST(Facade, SleepLastsAsLongAsAsked) {
  using Clock = std::chrono::steady_clock;
  const Object facade = Owned<Functions>::make().object();
  for (const Variant& asked : {Variant(60), Variant(u"60"), Variant(59.6)}) {
    Variant variable = asked;
    const Clock::time_point start = Clock::now();
    EXPECT_EQ(rawCall(facade, u"Sleep", {referenceTo(variable)}).code, S_OK);
    EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(55));
  }
  for (const Variant& nothing :
       {Variant(0), Variant(), Variant(u"abc"), Variant::null(), Variant(1e12), Variant::missing(),
        Variant(ScriptObject().object())})
    EXPECT_EQ(rawCall(facade, u"Sleep", {nothing}).code, S_OK);
}

TEST(PumpingWait, CountsInThirtyTwoBitSteps) {
  constexpr std::int32_t kMin = INT32_MIN, kMax = INT32_MAX;
  EXPECT_EQ(remainingTime(1000, 50, 250), 800);
  EXPECT_EQ(remainingTime(100, 50, 250), -100);
  EXPECT_EQ(remainingTime(1000, kMin, kMin + 1), std::nullopt);  // although the sum is 999
  EXPECT_EQ(remainingTime(kMax, -10, -9), std::nullopt);
  EXPECT_EQ(remainingTime(-1, 1000, 1500), -501);
}

}  // namespace
}  // namespace quendal::test
