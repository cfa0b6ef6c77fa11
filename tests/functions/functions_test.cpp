// `FUNCTIONS` and its `Concat`, as pages call them.
#include <gtest/gtest.h>

#include <chrono>
#include <tuple>

#include "functions/concat.h"
#include "functions/functions.h"
#include "functions/pumping_wait.h"
#include "tests/automation/values.h"
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

class ConcatTest : public ::testing::Test {
 protected:
  /// "Value|Length|BufferLength", preceded by "number " when the call raised an error.
  template <class... Arguments>
  std::string after(std::u16string_view member, Arguments&&... arguments) {
    const int error = raisedBy([&] {
      if (member == u"Value") {
        builder_.put(member, std::forward<Arguments>(arguments)...);
      } else {
        builder_.call(member, std::forward<Arguments>(arguments)...);
      }
    });
    return (error == 0 ? "" : std::to_string(error) + " ") + get(u"Value") + "|" + get(u"Length") +
           "|" + get(u"BufferLength");
  }
  std::string get(std::u16string_view property) { return toUtf8(textOf(builder_.get(property))); }

  Object builder_ = Owned<Concat>::make().object();
};

TEST_F(ConcatTest, StartsWithRoomAndGrowsByDoubling) {
  EXPECT_EQ(get(u"Buffer"), std::string(32, ' '));
  for (const auto& [length, capacity] : {std::pair{32u, 32u}, {33, 64}, {65, 128}, {1000, 1024}}) {
    const std::string text(length, 'x');
    const std::string expected =
        text + "|" + std::to_string(length) + "|" + std::to_string(capacity);
    while (get(u"Value").size() < length - 1) builder_.call(u"Append", u"x");
    EXPECT_EQ(after(u"Append", u"x"), expected);
    EXPECT_EQ(get(u"Buffer"), text + std::string(capacity - length, ' '));
    builder_.call(u"Clear");
    EXPECT_EQ(after(u"AppendEx", fromUtf8(text)), expected);  // at once
  }
  EXPECT_EQ(after(u"Clear", 3), "|0|3");
  EXPECT_EQ(after(u"Append", u"abcd"), "abcd|4|6");  // from whatever the capacity is
}

TEST_F(ConcatTest, PutsQuotesOfEachStyle) {
  const std::pair<std::int32_t, std::string> styles[] = {
      {0, "a\""},   {1, "\"a\"\""},  {2, "'a\"'"}, {3, "[a\"]"},  // nothing is doubled
      {4, "#a\"#"}, {5, " [a\"$] "}, {9, "a\""},   {-1, "a\""}};
  for (const auto& [style, expected] : styles) {
    builder_.put(u"Value", u"a\"");
    EXPECT_EQ(textOf(builder_.get(u"Text", style)), fromUtf8(expected));
    builder_.call(u"Clear");
    builder_.call(u"AppendEx", u"a\"", style);
    builder_.call(u"Prepend", u"a\"", std::int16_t{1}, style);
    EXPECT_EQ(get(u"Value"), expected.substr(0, 1) + expected + expected.substr(1));
  }
}

TEST_F(ConcatTest, AppendsTheTextOfEachArgument) {
  EXPECT_EQ(after(u"Append"), "|0|32");
  EXPECT_EQ(after(u"Append", u"a", 1, Boolean::True, Variant(), 2.5), "a1True2.5|9|32");
  // What has no text stops it; what came before stays.
  EXPECT_EQ(after(u"Append", u"<", Variant::null(), u">"), "94 a1True2.5<|10|32");
  EXPECT_EQ(after(u"Append", u"[", Variant::missing()), "13 a1True2.5<[|11|32");
  EXPECT_EQ(after(u"Append", ScriptObject().object()), "438 a1True2.5<[|11|32");
}

TEST_F(ConcatTest, InsertsAtAPositionOfTheContent) {
  const std::pair<int, const char*> rows[] = {
      {0, "Xabc|4|32"},   {1, "aXbc|4|32"},      {3, "abcX|4|32"},      {4, "5 abc|3|32"},
      {-1, "5 abc|3|32"}, {32767, "6 abc|3|32"}, {-32768, "5 abc|3|32"}};
  for (const auto& [index, expected] : rows) {
    builder_.put(u"Value", u"abc");
    EXPECT_EQ(after(u"Prepend", u"X", static_cast<std::int16_t>(index)), expected);
  }
  builder_.put(u"Value", u"tail");
  EXPECT_EQ(after(u"Prepend", std::u16string(30, u'x')), std::string(30, 'x') + "tail|34|64");
}

TEST_F(ConcatTest, ClearsTrimsAndReplaces) {
  EXPECT_EQ(after(u"Clear", 1000), "|0|1000");
  EXPECT_EQ(after(u"Value", u"hi"), "hi|2|1000");  // keeps the capacity
  EXPECT_EQ(after(u"Value", u""), "|0|1000");
  EXPECT_EQ(get(u"Buffer"), std::string(1000, ' '));
  EXPECT_EQ(after(u"Clear", 50000000), "|0|50000000");
  EXPECT_EQ(after(u"Clear", 0), "|0|32");

  EXPECT_EQ(after(u"Append", u" ", u"a b", u"\t "), " a b\t |6|32");
  EXPECT_EQ(after(u"TrimToSize"), "a b\t|4|4");  // blanks of the content go too
  EXPECT_EQ(get(u"Buffer"), "a b\t");
  EXPECT_EQ(after(u"Value", u"  "), "  |2|4");
  EXPECT_EQ(after(u"TrimToSize"), "|0|0");
  EXPECT_EQ(after(u"Append", u""), "|0|0");  // anything longer would never return
}

TEST_F(ConcatTest, AFailedClearLeavesTheOldBufferBesideTheNewCapacity) {
  builder_.put(u"Value", u"old");
  EXPECT_EQ(after(u"Clear", -5), "5 |0|-5");
  // Doubling a negative capacity ends where it does not fit any more, and stays there.
  EXPECT_EQ(after(u"AppendEx", u"x"), "6 |0|-1342177280");
  EXPECT_EQ(after(u"Prepend", u"x"), "5 |0|-1342177280");
  EXPECT_EQ(after(u"Value", u"x"), "5 |0|-1342177280");
  EXPECT_EQ(get(u"Buffer"), "old" + std::string(29, ' '));
  EXPECT_EQ(after(u"TrimToSize"), "old|3|3");  // takes over what it finds
  EXPECT_EQ(after(u"Clear"), "|0|32");
}

}  // namespace
}  // namespace quendal::test
