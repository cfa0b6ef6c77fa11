// Sort of arrays and of dictionaries, and the order of values under it.
#include <cmath>
#include <limits>
#include <tuple>

#include "arrays/array_functions.h"
#include "arrays/dictionary_functions.h"
#include "arrays/sort_in_place.h"
#include "core/dictionary.h"
#include "tests/automation/values.h"

namespace quendal::test {
namespace {

constexpr SortOrder kBinary{CompareMode::Binary, false};
constexpr SortOrder kText{CompareMode::Text, false};
constexpr SortOrder kTextDown{CompareMode::Text, true};

Variant number(double value) { return Variant(value); }

TEST(Sort, PutsNumbersByValueBeforeTexts) {
  const Object seven = ScriptObject().defaultMember([](auto) { return number(7); }).object();
  const std::tuple<std::vector<Variant>, SortOrder, const char*> rows[] = {
      {{Variant(10), number(9.5), Variant(std::int16_t{-1})}, kText, "[-1 9.5 10]"},
      {{number(0), Boolean::True, cy(-5000), Variant()}, kText, "[True -0.5 0 ~]"},
      // What doubles cannot tell apart.
      {{i8(INT64_MAX), i8((1LL << 53) + 1), i8(1LL << 53), i8(INT64_MAX - 1)},
       kText,
       "[9007199254740992 9007199254740993 9223372036854775806 9223372036854775807]"},
      {{u"a", u"", Variant(), u""}, kTextDown, "[a  ~ ]"},
      {{u"abcd", Variant(), u"abc", u""}, kBinary, "[~  abc abcd]"},
      // One order, whatever the order before.
      {{u"9", number(10), Variant(), u"5x", number(-1)}, kBinary, "[-1 ~ 10 5x 9]"},
      {{number(10), u"5x", u"9", number(-1), Variant()}, kTextDown, "[9 5x 10 ~ -1]"},
      {{Variant(seven), number(8), number(6)}, kText, "[6 ? 8]"},
      {{Variant::null()}, kText, "[Null]"}};  // nothing to compare it with
  for (const auto& [values, order, expected] : rows) {
    const Variant array = arrayOf(values);
    qSortInPlace(array, kOwnBound, kOwnBound, order);
    EXPECT_EQ(shownArray(array), expected);
  }
  // What is no number comes before all numbers.
  const Variant array =
      arrayOf({number(-9), number(std::numeric_limits<double>::quiet_NaN()), number(-10)});
  qSortInPlace(array, kOwnBound, kOwnBound, kText);
  EXPECT_TRUE(std::isnan(ArrayView(array).at(0).dblVal));
  EXPECT_EQ(ArrayView(array).at(1).dblVal, -10);
}

TEST(Sort, TakesAPartAndTellsWhatIsWrongWithABound) {
  const std::string outside = " parameter is outside the bounds of the InputArray.";
  const std::tuple<Variant, int, int, int, std::string> rows[] = {
      {of(u"edcba"), 1, 3, 1, "[e b c d a]"},
      {of(u"53412", VT_UI1), -1, 2, 1, "[3 4 5 1 2]"},
      {of(u"edcba", VT_BSTR, 10), 13, -1, 1, "10[e d c a b]"},
      {of(nullptr), -1, -1, 1, "The InputArray is an unallocated array."},
      {twoDimensions(), -1, -1, 1,
       "The InputArray is multi-dimensional. "
       "QSortInPlace works only on single-dimensional arrays."},
      {of(u"cba"), -2, -1, 1, "The LB" + outside},
      {of(u"cba"), 0, 3, 1, "The UB" + outside},
      {of(u"cba"), 2, 1, 1, "The LB parameter is greater than the UB parameter."},
      {of(u"", VT_VARIANT, INT32_MIN), 0, 2, 1, "The LB" + outside},  // no 32 bits for its own
      {of(u"cba"), -1, -1, 2, "The CompareMode parameter is neither binary (0) nor text (1)."},
      {arrayOf({u"b", Variant::null(), u"a"}), -1, -1, 1, "Invalid use of Null"}};
  for (const auto& [array, lower, upper, mode, expected] : rows) {
    PageVariable page(array);
    std::string outcome, left = shownArray(array);
    try {
      qSortInPlace(page.variable, lower, upper, {CompareMode{mode}, false});
      outcome = left = shownArray(page.variable);
    } catch (const AutomationError& error) {
      outcome = toUtf8(error.description());
    }
    EXPECT_EQ(outcome, expected);
    EXPECT_EQ(
        ArrayFunctions().sort(page.reference, lower, upper, Boolean::False, mode, Boolean::True),
        booleanOf(outcome == left));
    EXPECT_EQ(shownArray(page.variable), left);
  }
}

TEST(Sort, ChangesTheVariableHoweverItIsPassed) {
  const std::tuple<VARTYPE, bool, int, const char*> rows[] = {
      {VT_VARIANT, false, 0, "[- 1 A B a b \u00C9 \u00E9 \u042F]"},
      {VT_VARIANT, false, 1, "[- 1 a A b B \u00E9 \u00C9 \u042F]"},
      {VT_BSTR, true, 1, "[\u042F \u00E9 \u00C9 b B a A 1 -]"}};
  for (const auto& [type, isDown, mode, expected] : rows) {
    for (const auto& [typed, twice] : kWays) {
      PageVariable page(of(u"ab\u00E9-BA1\u042F\u00C9", type), typed, twice);
      EXPECT_EQ(
          ArrayFunctions().sort(page.reference, -1, -1, booleanOf(isDown), mode, Boolean::True),
          Boolean::True);
      EXPECT_EQ(shownArray(page.variable), expected);
    }
  }
}

using Entries = std::vector<std::pair<Variant, Variant>>;

Variant sorted(const Object& dictionary, bool byKey = false, bool isDown = false,
               std::int32_t mode = 1) {
  return DictionaryFunctions().sort(dictionary, booleanOf(byKey), booleanOf(isDown), mode);
}

std::string contents(const Dictionary& dictionary) {
  return shownArray(dictionary.keys()) + " " + shownArray(dictionary.items());
}

TEST(DictionarySort, OrdersByKeyOrItem) {
  const Entries numbers = {{number(10), u"b"}, {number(9.5), u"B"}, {number(-1), u"a"}};
  const Entries texts = {
      {u"b", number(3)}, {u"B", number(2.5)}, {u"a", number(10)}, {u"A", number(2.5)}};
  const std::tuple<const Entries&, bool, bool, int, const char*> rows[] = {
      {numbers, true, false, 1, "[-1 9.5 10] [a B b]"},
      {numbers, false, false, 0, "[9.5 -1 10] [B a b]"},
      {numbers, false, true, 1, "[10 9.5 -1] [b B a]"},
      {texts, true, false, 0, "[A B a b] [2.5 2.5 10 3]"},
      {texts, false, true, 1, "[a b B A] [10 3 2.5 2.5]"}};
  for (const auto& [entries, byKey, isDown, mode, expected] : rows) {
    const Object dictionary = dictionaryOf(entries).object();
    EXPECT_EQ(sorted(dictionary, byKey, isDown, mode).pdispVal, dictionary.dispatch());
    EXPECT_EQ(contents(*Dictionary::from(dictionary)), expected);
  }
}

TEST(DictionarySort, KeepsTypesObjectsAndArrays) {
  const Object plain = ScriptObject().object();
  const Dictionary dictionary = dictionaryOf({{Variant(std::int16_t{4}), Variant(plain)},
                                              {number(3), of(u"xy")},
                                              {Variant(2), Variant(Object())},
                                              {Variant::date(1.0), Variant::null()}});
  sorted(dictionary.object(), true);
  EXPECT_EQ(shownArray(dictionary.items()), "[Null Nothing [x y] ?]");
  EXPECT_EQ(dictionary.item(number(4)).pdispVal, plain.dispatch());
  const Variant keys = dictionary.keys();
  const VARTYPE types[] = {VT_DATE, VT_I4, VT_R8, VT_I2};
  for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(ArrayView(keys).at(i).vt, types[i]);
}

TEST(DictionarySort, RefusesWhatItCannotSortAndChangesNothing) {
  const Object empty = dictionaryOf({}).object();
  EXPECT_EQ(raisedBy([&] { sorted(Object()); }), 91);
  EXPECT_EQ(raisedBy([&] { sorted(ScriptObject().object()); }), 13);
  EXPECT_EQ(raisedBy([&] { sorted(empty); }), 0);
  EXPECT_EQ(raisedBy([&] { sorted(empty, false, false, 2); }), 5);
  const std::pair<Variant, int> rows[] = {{Variant::null(), 94},
                                          {of(u"a"), 13},
                                          {Variant(Object()), 91},
                                          {Variant(ScriptObject().object()), 438}};
  for (const auto& [item, error] : rows) {
    const Dictionary dictionary = dictionaryOf({{u"b", u"z"}, {u"a", item}});
    EXPECT_EQ(raisedBy([&] { sorted(dictionary.object()); }), error);
    EXPECT_EQ(contents(dictionary), "[b a] [z " + shownArray(item) + "]");
  }
}

TEST(DictionarySort, BearsWithItemsThatChangeTheDictionaryWhenAsked) {
  const Dictionary dictionary = Dictionary::create();
  const auto change = [&](auto) {
    dictionary.remove(u"b");
    dictionary.add(u"new", u"n");
    return Variant(u"c");
  };
  dictionary.add(u"c", Variant(ScriptObject().defaultMember(change).object()));
  dictionary.add(u"b", u"b");
  dictionary.add(u"a", u"a");
  sorted(dictionary.object());
  EXPECT_EQ(contents(dictionary), "[new a c] [n a ?]");
}

}  // namespace
}  // namespace quendal::test
