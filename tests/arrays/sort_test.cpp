// Sort, and the order of values under it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include "arrays/array_functions.h"
#include "arrays/sort_in_place.h"
#include "platform/locale.h"
#include "tests/arrays/page_arrays.h"
#include "tests/support/script_object.h"

namespace quendal::test {
namespace {

constexpr SortOrder kBinary{CompareMode::Binary, false};
constexpr SortOrder kText{CompareMode::Text, false};
constexpr SortOrder kTextDown{CompareMode::Text, true};

Variant number(std::int32_t value) { return Variant(value); }

Variant typed64(VARTYPE type, std::int64_t value) {
  Variant result;
  result.llVal = value;
  result.vt = type;
  return result;
}

std::string sorted(Variant array, const SortOrder& order, std::int32_t lower = kOwnBound,
                   std::int32_t upper = kOwnBound) {
  qSortInPlace(array, lower, upper, order);
  return shownArray(array);
}

TEST(Sort, PutsNumbersByValueBeforeTexts) {
  const Object seven = ScriptObject().defaultMember([](auto) { return number(7); }).object();
  const struct {
    Variant array;
    SortOrder order;
    const char* expected;
  } rows[] = {
      {pageArray({number(10), number(9), Variant(9.5), Variant(std::int16_t{-1})}), kText,
       "[-1 9 9.5 10]"},
      {pageArray({number(0), Variant(Boolean::True), typed64(VT_CY, -5000), Variant()}), kText,
       "[True -0.5 0 ~]"},
      // What doubles cannot tell apart.
      {pageArray({typed64(VT_I8, (1LL << 53) + 1), typed64(VT_I8, 1LL << 53),
                  typed64(VT_I8, (1LL << 53) + 2)}),
       kText, "[9007199254740992 9007199254740993 9007199254740994]"},
      {pageArray(
           {typed64(VT_I8, INT64_MAX), typed64(VT_I8, INT64_MAX - 1), typed64(VT_I8, INT64_MIN)}),
       kText, "[-9223372036854775808 9223372036854775806 9223372036854775807]"},
      {of(u"bBaAc"), kText, "[a A b B c]"},
      {of(u"bBaAc"), kTextDown, "[c b B a A]"},
      {pageArray({Variant(u"a"), Variant(u""), Variant(), Variant(u"")}), kTextDown, "[a  ~ ]"},
      {pageArray({Variant(), number(0), Variant(), Variant(2.5), number(-1)}), kText,
       "[-1 ~ 0 ~ 2.5]"},
      {pageArray({Variant(u"abcde"), Variant(u"abcd"), Variant(), Variant(u"abc"), Variant(u"")}),
       kBinary, "[~  abc abcd abcde]"},
      // One order, whatever the order before.
      {pageArray({Variant(u"9"), number(10), Variant(), Variant(u"5x"), number(-1)}), kBinary,
       "[-1 ~ 10 5x 9]"},
      {pageArray({number(10), Variant(u"5x"), Variant(u"9"), number(-1), Variant()}), kTextDown,
       "[9 5x 10 ~ -1]"},
      {pageArray({Variant(seven), number(8), number(6)}), kText, "[6 ? 8]"},
      {of(u"3142", VT_UI1), kText, "[1 2 3 4]"},
      {of(u"dacb", VT_BSTR, 4), kText, "4[a b c d]"},
      {pageArray({Variant::null()}), kText, "[Null]"}};  // nothing to compare it with
  for (const auto& row : rows) EXPECT_EQ(sorted(row.array, row.order), row.expected);

  // What is no number comes before all numbers.
  const Variant array =
      pageArray({number(-9), Variant(std::numeric_limits<double>::quiet_NaN()), number(-10)});
  qSortInPlace(array, kOwnBound, kOwnBound, kText);
  const ArrayView view(array);
  EXPECT_TRUE(std::isnan(view.at(0).dblVal));
  EXPECT_EQ(view.at(1).lVal, -10);
}

TEST(Sort, TakesAPartAndTellsWhatIsWrongWithABound) {
  EXPECT_EQ(sorted(of(u"edcba"), kText, 1, 3), "[e b c d a]");
  EXPECT_EQ(sorted(of(u"edcba"), kText, -1, 2), "[c d e b a]");
  EXPECT_EQ(sorted(of(u"edcba", VT_VARIANT, 10), kText, 13, -1), "10[e d c a b]");

  const struct {
    Variant value;
    std::int32_t lower, upper;
    SortOrder order;
    const char16_t* message;
  } rows[] = {
      {Variant::array(nullptr), -1, -1, kText, u"The InputArray is an unallocated array."},
      {twoDimensions(), -1, -1, kText,
       u"The InputArray is multi-dimensional. "
       u"QSortInPlace works only on single-dimensional arrays."},
      {of(u"cba"), -2, -1, kText, u"The LB parameter is outside the bounds of the InputArray."},
      {of(u"cba"), 0, 3, kText, u"The UB parameter is outside the bounds of the InputArray."},
      {of(u"cba"), 2, 1, kText, u"The LB parameter is greater than the UB parameter."},
      // Its upper bound has no 32 bits.
      {of(u"", VT_VARIANT, INT32_MIN), 0, 2, kText,
       u"The LB parameter is outside the bounds of the InputArray."},
      {of(u"cba"), -1, -1, SortOrder{CompareMode{2}, false},
       u"The CompareMode parameter is neither binary (0) nor text (1)."},
      {pageArray({Variant(u"b"), Variant::null(), Variant(u"a")}), -1, -1, kText,
       u"Invalid use of Null"},
      {pageArray({Variant(u"b"), of(u"a")}), -1, -1, kText, u"Type mismatch"},
      {pageArray({Variant(u"b"), Variant(Object())}), -1, -1, kText,
       u"Object variable or With block variable not set"},
      {pageArray({Variant(u"b"), Variant(ScriptObject().object()), Variant(u"a")}), -1, -1, kText,
       u"Object doesn't support this property or method"}};
  ArrayFunctions arrays;
  for (const auto& row : rows) {
    PageVariable variable(row.value);
    try {
      qSortInPlace(variable.value(), row.lower, row.upper, row.order);
      ADD_FAILURE() << toUtf8(row.message);
    } catch (const AutomationError& error) {
      EXPECT_EQ(error.description(), row.message);
    }
    EXPECT_EQ(arrays.sort(variable.reference(), row.lower, row.upper, Boolean::False,
                          static_cast<std::int32_t>(row.order.mode), Boolean::True),
              Boolean::False);
    EXPECT_EQ(shownArray(variable.value()), shownArray(row.value));
  }
}

TEST(Sort, AgreesWithAPlainStableSortHoweverTheArrayIsPassed) {
  std::mt19937 random(7);
  for (int round = 0; round < 80; ++round) {
    const bool isText = random() % 2 == 0, isBinary = random() % 2 == 0, isDown = random() % 2 == 0;
    const VARTYPE type = isText ? VT_BSTR : random() % 2 == 0 ? VT_R8 : VT_I4;
    const std::size_t size = random() % (round % 4 == 0 ? 2000 : 100);
    std::vector<Variant> values;
    for (std::size_t i = 0; i < size; ++i) {
      std::u16string text(random() % 9, u'k');
      for (char16_t& unit : text) unit = u"aAbB-1\u00C9\u00E9\u042F"[random() % 9];
      const double number = static_cast<std::int32_t>(random()) / (type == VT_R8 ? 7.0 : 1.0);
      values.push_back(isText ? Variant(text) : converted(Variant(number), type));
    }
    PageVariable variable(pageArray(values), random() % 2 == 0, random() % 2 == 0);
    std::ranges::stable_sort(values, [&](const Variant& a, const Variant& b) {
      if (!isText) return isDown ? doubleOf(a) > doubleOf(b) : doubleOf(a) < doubleOf(b);
      const std::u16string_view x = viewOf(a.bstrVal), y = viewOf(b.bstrVal);
      const int order =
          isBinary ? x.compare(y) : platform::lowerCase(x).compare(platform::lowerCase(y));
      return isDown ? order > 0 : order < 0;
    });
    EXPECT_EQ(ArrayFunctions().sort(variable.reference(), -1, -1, booleanOf(isDown),
                                    isBinary ? 0 : 1, Boolean::True),
              Boolean::True);
    EXPECT_EQ(shownArray(variable.value()), shownArray(pageArray(values)));
  }
}

}  // namespace
}  // namespace quendal::test
