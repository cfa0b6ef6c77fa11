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
  void renew() { builder_ = Owned<Concat>::make().object(); }

  static std::u16string letters(std::size_t count) { return std::u16string(count, u'x'); }

  Object builder_ = Owned<Concat>::make().object();
};

TEST_F(ConcatTest, StartsWithRoomAndGrowsByDoubling) {
  EXPECT_EQ(state(), "|0|32");
  EXPECT_EQ(get(u"Buffer"), std::string(32, ' '));
  for (const auto& [length, capacity] :
       {std::pair{32, 32}, {33, 64}, {64, 64}, {65, 128}, {100, 128}, {1000, 1024}}) {
    renew();
    const std::u16string text = letters(static_cast<std::size_t>(length));
    const std::string expected =
        toUtf8(text) + "|" + std::to_string(length) + "|" + std::to_string(capacity);
    EXPECT_EQ(after(u"AppendEx", text), expected);
    renew();
    for (int i = 0; i < length; ++i) builder_.call(u"Append", u"x");
    EXPECT_EQ(state(), expected);
    EXPECT_EQ(get(u"Buffer"),
              toUtf8(text) + std::string(static_cast<std::size_t>(capacity - length), ' '));
  }
  EXPECT_EQ(after(u"Clear", std::int32_t{3}), "|0|3");
  EXPECT_EQ(after(u"Append", u"abcd"), "abcd|4|6");  // from whatever the capacity is
}

TEST_F(ConcatTest, PutsQuotesOfEachStyle) {
  const std::pair<std::int32_t, const char*> styles[] = {{0, "ab"},   {1, "\"ab\""}, {2, "'ab'"},
                                                         {3, "[ab]"}, {4, "#ab#"},   {5, " [ab$] "},
                                                         {9, "ab"},   {-1, "ab"}};
  for (const auto& [style, expected] : styles) {
    renew();
    builder_.call(u"Append", u"ab");
    EXPECT_EQ(textOf(builder_.get(u"Text", style)), fromUtf8(expected));
    EXPECT_EQ(get(u"Text"), "ab");
    builder_.call(u"Clear");
    builder_.call(u"AppendEx", u"ab", style);
    EXPECT_EQ(get(u"Value"), expected);
    builder_.put(u"Value", u"<>");
    builder_.call(u"Prepend", u"ab", std::int16_t{1}, style);
    EXPECT_EQ(get(u"Value"), std::string("<") + expected + ">");
  }
  EXPECT_EQ(after(u"AppendEx", u"\"", std::int32_t{1}), "<ab>\"\"\"|7|32");  // nothing is doubled
}

TEST_F(ConcatTest, AppendsTheTextOfEachArgument) {
  EXPECT_EQ(after(u"Append"), "|0|32");
  EXPECT_EQ(after(u"Append", u"a", std::int16_t{1}, Boolean::True), "a1True|6|32");
  EXPECT_EQ(after(u"Append", Variant(), 2.5, u""), "a1True2.5|9|32");
  // What has no text stops it; what came before stays.
  EXPECT_EQ(after(u"Append", u"<", Variant::null(), u">"), "94 a1True2.5<|10|32");
  EXPECT_EQ(after(u"Append", u"[", Variant::missing()), "13 a1True2.5<[|11|32");
  EXPECT_EQ(after(u"Append", arrayOf({})), "13 a1True2.5<[|11|32");
  EXPECT_EQ(after(u"Append", ScriptObject().object()), "438 a1True2.5<[|11|32");
  const Object five =
      ScriptObject().defaultMember([](auto) { return Variant(std::int16_t{5}); }).object();
  EXPECT_EQ(after(u"Append", five), "a1True2.5<[5|12|32");
}

TEST_F(ConcatTest, InsertsAtAPositionOfTheContent) {
  const struct {
    std::int16_t index;
    const char* expected;
  } rows[] = {{0, "Xabc|4|32"},   {1, "aXbc|4|32"},      {3, "abcX|4|32"},      {4, "5 abc|3|32"},
              {-1, "5 abc|3|32"}, {32767, "6 abc|3|32"}, {-32768, "5 abc|3|32"}};
  for (const auto& row : rows) {
    renew();
    afterPut(u"abc");
    EXPECT_EQ(after(u"Prepend", u"X", row.index), row.expected);
  }
  renew();
  afterPut(u"tail");
  EXPECT_EQ(after(u"Prepend", letters(30)), toUtf8(letters(30)) + "tail|34|64");
}

TEST_F(ConcatTest, ClearsTrimsAndReplaces) {
  EXPECT_EQ(after(u"Clear", std::int32_t{1000}), "|0|1000");
  EXPECT_EQ(get(u"Buffer"), std::string(1000, ' '));
  EXPECT_EQ(afterPut(u"hi"), "hi|2|1000");  // keeps the capacity
  EXPECT_EQ(afterPut(u""), "|0|1000");
  EXPECT_EQ(after(u"Clear", std::int32_t{0}), "|0|32");
  EXPECT_EQ(after(u"Clear", std::int32_t{50000000}), "|0|50000000");
  EXPECT_EQ(after(u"Clear"), "|0|32");

  EXPECT_EQ(after(u"Append", u" ", u"a b", u" "), " a b |5|32");
  EXPECT_EQ(after(u"TrimToSize"), "a b|3|3");  // blanks of the content go too
  EXPECT_EQ(get(u"Buffer"), "a b");
  EXPECT_EQ(after(u"Append", u"\t "), "a b\t |5|6");
  EXPECT_EQ(after(u"TrimToSize"), "a b\t|4|4");
  EXPECT_EQ(afterPut(u"  "), "  |2|4");
  EXPECT_EQ(after(u"TrimToSize"), "|0|0");
  EXPECT_EQ(after(u"Append", u""), "|0|0");  // anything longer would never return
  EXPECT_EQ(after(u"Clear"), "|0|32");
}

TEST_F(ConcatTest, AFailedClearLeavesTheOldBufferBesideTheNewCapacity) {
  afterPut(u"old");
  EXPECT_EQ(after(u"Clear", std::int32_t{-5}), "5 |0|-5");
  EXPECT_EQ(get(u"Buffer"), "old" + std::string(29, ' '));
  EXPECT_EQ(get(u"Text"), "");
  // Doubling a negative capacity ends where it does not fit any more, and stays there.
  EXPECT_EQ(after(u"AppendEx", u"x"), "6 |0|-1342177280");
  EXPECT_EQ(after(u"Append", u""), "6 |0|-1342177280");
  EXPECT_EQ(after(u"Prepend", u"x"), "5 |0|-1342177280");
  EXPECT_THROW(afterPut(u"x"), AutomationError);
  EXPECT_EQ(get(u"Buffer"), "old" + std::string(29, ' '));
  EXPECT_EQ(after(u"TrimToSize"), "old|3|3");  // takes over what it finds

  EXPECT_EQ(after(u"Clear", std::int32_t{-1}), "5 |0|-1");
  EXPECT_EQ(after(u"Clear"), "|0|32");
  EXPECT_EQ(after(u"Append", u"new"), "new|3|32");
}

}  // namespace
}  // namespace quendal::test
