// `Concat`, as pages call it.
#include <gtest/gtest.h>

#include "base/utf8.h"
#include "core/dispatch.h"
#include "functions/concat.h"
#include "tests/support/script_object.h"

namespace quendal::test {
namespace {

class ConcatTest : public ::testing::Test {
 protected:
  /// "Value|Length|BufferLength", preceded by "number " when the call raised an error.
  template <class... Arguments>
  std::string after(std::u16string_view member, Arguments&&... arguments) {
    std::string error;
    try {
      builder_.call(member, std::forward<Arguments>(arguments)...);
    } catch (const AutomationError& raised) {
      error = std::to_string(raised.number()) + " ";
    }
    return error + state();
  }
  std::string afterPut(std::u16string_view text) {
    builder_.put(u"Value", text);
    return state();
  }
  std::string get(std::u16string_view property) { return toUtf8(textOf(builder_.get(property))); }
  std::string state() { return get(u"Value") + "|" + get(u"Length") + "|" + get(u"BufferLength"); }

  Object builder_ = Owned<Concat>::make().object();
};

TEST_F(ConcatTest, StartsWithRoomAndGrowsByDoubling) {
  EXPECT_EQ(state(), "|0|32");
  EXPECT_EQ(get(u"Buffer"), std::string(32, ' '));
  std::string text;
  for (const auto& [length, capacity] : {std::pair{32u, 32u}, {33, 64}, {65, 128}, {1000, 1024}}) {
    while (text.size() < length) {
      builder_.call(u"Append", u"x");
      text += 'x';
    }
    const std::string expected =
        text + "|" + std::to_string(length) + "|" + std::to_string(capacity);
    EXPECT_EQ(state(), expected);
    EXPECT_EQ(get(u"Buffer"), text + std::string(capacity - length, ' '));
    const Object other = std::exchange(builder_, Owned<Concat>::make().object());
    EXPECT_EQ(after(u"AppendEx", fromUtf8(text)), expected);  // at once
    builder_ = other;
  }
  EXPECT_EQ(after(u"Clear", std::int32_t{3}), "|0|3");
  EXPECT_EQ(after(u"Append", u"abcd"), "abcd|4|6");  // from whatever the capacity is
}

TEST_F(ConcatTest, PutsQuotesOfEachStyle) {
  const std::pair<std::int32_t, const char*> styles[] = {
      {0, "a\""},   {1, "\"a\"\""},  {2, "'a\"'"}, {3, "[a\"]"},  // nothing is doubled
      {4, "#a\"#"}, {5, " [a\"$] "}, {9, "a\""},   {-1, "a\""}};
  for (const auto& [style, expected] : styles) {
    builder_.put(u"Value", u"a\"");
    EXPECT_EQ(textOf(builder_.get(u"Text", style)), fromUtf8(expected));
    builder_.call(u"Clear");
    builder_.call(u"AppendEx", u"a\"", style);
    EXPECT_EQ(get(u"Value"), expected);
    builder_.put(u"Value", u"<>");
    builder_.call(u"Prepend", u"a\"", std::int16_t{1}, style);
    EXPECT_EQ(get(u"Value"), std::string("<") + expected + ">");
  }
}

TEST_F(ConcatTest, AppendsTheTextOfEachArgument) {
  EXPECT_EQ(after(u"Append"), "|0|32");
  EXPECT_EQ(after(u"Append", u"a", std::int16_t{1}, Boolean::True, Variant(), 2.5),
            "a1True2.5|9|32");
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
    afterPut(u"abc");
    EXPECT_EQ(after(u"Prepend", u"X", static_cast<std::int16_t>(index)), expected);
  }
  afterPut(u"tail");
  EXPECT_EQ(after(u"Prepend", std::u16string(30, u'x')), std::string(30, 'x') + "tail|34|64");
}

TEST_F(ConcatTest, ClearsTrimsAndReplaces) {
  EXPECT_EQ(after(u"Clear", std::int32_t{1000}), "|0|1000");
  EXPECT_EQ(get(u"Buffer"), std::string(1000, ' '));
  EXPECT_EQ(afterPut(u"hi"), "hi|2|1000");  // keeps the capacity
  EXPECT_EQ(afterPut(u""), "|0|1000");
  EXPECT_EQ(after(u"Clear", std::int32_t{50000000}), "|0|50000000");
  EXPECT_EQ(after(u"Clear", std::int32_t{0}), "|0|32");

  EXPECT_EQ(after(u"Append", u" ", u"a b", u"\t "), " a b\t |6|32");
  EXPECT_EQ(after(u"TrimToSize"), "a b\t|4|4");  // blanks of the content go too
  EXPECT_EQ(get(u"Buffer"), "a b\t");
  EXPECT_EQ(afterPut(u"  "), "  |2|4");
  EXPECT_EQ(after(u"TrimToSize"), "|0|0");
  EXPECT_EQ(after(u"Append", u""), "|0|0");  // anything longer would never return
  EXPECT_EQ(after(u"Clear"), "|0|32");
}

TEST_F(ConcatTest, AFailedClearLeavesTheOldBufferBesideTheNewCapacity) {
  afterPut(u"old");
  EXPECT_EQ(after(u"Clear", std::int32_t{-5}), "5 |0|-5");
  EXPECT_EQ(get(u"Buffer"), "old" + std::string(29, ' '));
  // Doubling a negative capacity ends where it does not fit any more, and stays there.
  EXPECT_EQ(after(u"AppendEx", u"x"), "6 |0|-1342177280");
  EXPECT_EQ(after(u"Append", u""), "6 |0|-1342177280");
  EXPECT_EQ(after(u"Prepend", u"x"), "5 |0|-1342177280");
  EXPECT_THROW(afterPut(u"x"), AutomationError);
  EXPECT_EQ(get(u"Buffer"), "old" + std::string(29, ' '));
  EXPECT_EQ(after(u"TrimToSize"), "old|3|3");  // takes over what it finds
  EXPECT_EQ(after(u"Clear"), "|0|32");
}

}  // namespace
}  // namespace quendal::test
