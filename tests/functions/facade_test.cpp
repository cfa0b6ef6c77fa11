// `FUNCTIONS`: its helpers, Sleep, Max and Min.
#include <gtest/gtest.h>

#include <chrono>

#include "functions/functions.h"
#include "functions/pumping_wait.h"
#include "tests/arrays/page_arrays.h"
#include "tests/core/raw_call.h"
#include "tests/support/script_object.h"

namespace quendal::test {
namespace {

class FacadeTest : public ::testing::Test {
 protected:
  Owned<Functions> functions_ = Owned<Functions>::make();
  Object object_ = functions_.object();
};

TEST_F(FacadeTest, HandsOutTheSameHelpersEveryTime) {
  for (const char16_t* name : {u"JSON", u"Concat", u"STRINGS", u"ARRAYS", u"Dictionaries", u"OS"}) {
    const Variant first = object_.get(name);
    const Variant second = object_.get(name);
    EXPECT_NE(first.pdispVal, nullptr);
    EXPECT_EQ(first.pdispVal, second.pdispVal);
  }
  const Object arrays = Object::from(object_.get(u"ARRAYS"));
  functions_.reset();
  object_ = {};
  EXPECT_EQ(int32Of(arrays.call(u"GetUBound", of(u"abc"))), 2);  // outlives the facade
}

TEST_F(FacadeTest, MaxAndMinCompareAsTheHostDoes) {
  const auto number = [](std::int16_t value) { return Variant(value); };
  const Variant array = of(u"123"), plain(ScriptObject().object());
  const Variant five(ScriptObject().defaultMember([=](auto) { return number(5); }).object());
  const struct {
    std::vector<Variant> arguments;
    const char* max;
    const char* min;
    VARTYPE maxType;
  } rows[] = {{{}, "Null", "Null", VT_NULL},
              {{number(3), number(7), number(5)}, "7", "3", VT_I2},
              {{number(2), Variant(u"abc")}, "abc", "2", VT_BSTR},
              {{Variant(u"b"), Variant(u"B"), Variant(u"a")}, "b", "B", VT_BSTR},
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
  for (const auto& row : rows) {
    const std::vector<VARIANT> direct(row.arguments.begin(), row.arguments.end());
    const Outcome max = rawCall(object_, u"Max", direct);
    EXPECT_EQ(shownArray(max.value), row.max);
    EXPECT_EQ(max.value.vt, row.maxType);
    EXPECT_EQ(shownArray(rawCall(object_, u"Min", direct).value), row.min);

    std::vector<Variant> variables = row.arguments;
    std::vector<VARIANT> references;
    for (Variant& variable : variables) references.push_back(referenceTo(variable));
    EXPECT_EQ(shownArray(rawCall(object_, u"Max", references).value), row.max);
    EXPECT_EQ(shownArray(functions_->min(references)), row.min);
  }
}

// How long it takes at most is up to the machine; what is no time must only not wait without end.
TEST_F(FacadeTest, SleepLastsAsLongAsAsked) {
  using Clock = std::chrono::steady_clock;
  for (const Variant& asked : {Variant(std::int16_t{60}), Variant(u"60"), Variant(59.6)}) {
    Variant variable = asked;
    const Clock::time_point start = Clock::now();
    EXPECT_EQ(rawCall(object_, u"Sleep", {referenceTo(variable)}).code, S_OK);
    EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(55));
  }
  for (const Variant& nothing :
       {Variant(std::int32_t{0}), Variant(), Variant(u"abc"), Variant::null(), Variant(1e12),
        Variant::missing(), Variant(ScriptObject().object())})
    EXPECT_EQ(rawCall(object_, u"Sleep", {nothing}).code, S_OK);
}

TEST(PumpingWait, CountsInThirtyTwoBitSteps) {
  constexpr std::int32_t kMin = INT32_MIN, kMax = INT32_MAX;
  EXPECT_EQ(remainingTime(1000, 50, 250), 800);
  EXPECT_EQ(remainingTime(100, 50, 250), -100);
  EXPECT_EQ(remainingTime(1000, 0, kMin + 1), std::nullopt);
  EXPECT_EQ(remainingTime(1000, kMin, kMin + 1), std::nullopt);  // although the sum is 999
  EXPECT_EQ(remainingTime(kMax, -10, -9), std::nullopt);
  EXPECT_EQ(remainingTime(-1, 1000, 1500), -501);
}

}  // namespace
}  // namespace quendal::test
