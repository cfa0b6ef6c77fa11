// Slice, Splice and Reverse.
#include <gtest/gtest.h>

#include "arrays/array_functions.h"
#include "tests/arrays/page_arrays.h"
#include "tests/support/script_object.h"

namespace quendal::test {
namespace {

TEST(Slice, TakesPositionsFromEitherEnd) {
  const struct {
    Variant array;
    std::int32_t start, end;
    const char* slice;
    const char* rest;  // with removal
  } rows[] = {{of(u"abcde"), 1, 3, "[b c]", "[a d e]"},
              {of(u"abcde"), -2, 5, "[d e]", "[a b c]"},
              {of(u"abcde"), 3, 1, "[]", "[a b c d e]"},
              {of(u"abcde"), INT32_MIN, INT32_MAX, "[a b c d e]", "[]"},
              {of(u"abcde", VT_VARIANT, 3), 1, 3, "[b c]", "3[a d e]"},
              {of(u"123", VT_I4), 1, 2, "[2]", "[1 3]"},
              {of(nullptr), 0, 1, "[]", "none"}};
  ArrayFunctions arrays;
  for (const auto& row : rows) {
    inEveryPassing(row.array, [&](PageVariable& variable) {
      VariantRef& array = variable.reference();
      EXPECT_EQ(shownArray(arrays.slice(array, Boolean::False, row.start, row.end)), row.slice);
      EXPECT_EQ(shownArray(variable.value()), shownArray(row.array));
      const Variant slice = arrays.slice(array, Boolean::True, row.start, row.end);
      EXPECT_EQ(shownArray(slice), row.slice);
      EXPECT_EQ(slice.vt, kVariantArray);
      EXPECT_EQ(shownArray(variable.value()), row.rest);
    });
  }
}

std::vector<VARIANT> elementsOf(const Variant& array) {
  const ArrayView view(array);
  std::vector<VARIANT> elements;
  for (std::size_t i = 0; i < view.size(); ++i) elements.push_back(view.at(i));
  return elements;
}

TEST(Splice, RemovesAndInserts) {
  const struct {
    Variant array;
    std::int32_t offset, length;
    const char16_t* values;
    const char* removed;
    const char* left;
  } rows[] = {{of(u"abcde"), 1, 2, u"", "[b c]", "[a d e]"},
              {of(u"abcde"), 1, 1, u"xyz", "[b]", "[a x y z c d e]"},
              {of(u"abcde"), 5, 3, u"xy", "[]", "[a b c d e x y]"},
              {of(u"abcde"), -1, 9, u"x", "[e]", "[a b c d x]"},
              {of(u"abcde"), 2, -4, u"x", "[]", "[a b x c d e]"},
              {of(u"abc", VT_VARIANT, -4), 1, 1, u"xy", "[b]", "-4[a x y c]"},
              {of(u"123", VT_R8), 0, 1, u"456", "[1]", "[4 5 6 2 3]"},
              {of(nullptr), 3, 3, u"xy", "[]", "[x y]"},
              {of(nullptr), 0, 0, u"", "[]", "none"}};
  for (const auto& row : rows) {
    inEveryPassing(row.array, [&](PageVariable& variable) {
      const Variant values = of(row.values);
      EXPECT_EQ(shownArray(ArrayFunctions().splice(variable.reference(), row.offset, row.length,
                                                   elementsOf(values))),
                row.removed);
      EXPECT_EQ(shownArray(variable.value()), row.left);
    });
  }
  PageVariable own(of(u"abc"));
  const std::vector<VARIANT> values = {ArrayView(own.value()).at(0), own.argument()};
  EXPECT_EQ(shownArray(ArrayFunctions().splice(own.reference(), 0, 2, values)), "[a b]");
  EXPECT_EQ(shownArray(own.value()), "[a [a b c] c]");
}

TEST(Splice, ChangesNothingWhenItFails) {
  ArrayFunctions arrays;
  const Variant texts = of(u"xy");
  PageVariable variable(of(u"123", VT_I4), true);
  VariantRef& array = variable.reference();
  EXPECT_EQ(raisedBy([&] { arrays.splice(array, 0, 3, elementsOf(texts)); }), 13);
  ++variable.array()->cLocks;
  EXPECT_EQ(raisedBy([&] { arrays.splice(array, 0, 2, {}); }), 10);
  EXPECT_EQ(raisedBy([&] { arrays.slice(array, Boolean::True, 0, 1); }), 10);
  EXPECT_EQ(shownArray(variable.value()), "[1 2 3]");
  // As many in as out needs no other bounds.
  const Variant digits = of(u"89");
  EXPECT_EQ(shownArray(arrays.splice(array, 1, 2, elementsOf(digits))), "[2 3]");
  EXPECT_EQ(shownArray(variable.value()), "[1 8 9]");
  --variable.array()->cLocks;

  PageVariable last(of(u"a", VT_VARIANT, INT32_MAX));
  EXPECT_EQ(raisedBy([&] { arrays.splice(last.reference(), 0, 0, elementsOf(digits)); }), 9);
  EXPECT_EQ(shownArray(last.value()), "2147483647[a]");

  PageVariable square(twoDimensions());
  EXPECT_EQ(raisedBy([&] { arrays.splice(square.reference(), 0, 1, {}); }), 9);
  EXPECT_EQ(raisedBy([&] { arrays.slice(square.reference(), Boolean::False, 0, 1); }), 9);
  EXPECT_EQ(raisedBy([&] { arrays.reverse(square.reference()); }), 9);
}

TEST(Reverse, TurnsSimpleValuesAndObjectsRound) {
  const Variant object(ScriptObject().object());
  const struct {
    Variant array;
    const char* reversed;
  } rows[] = {{of(u"abcd", VT_BSTR, 5), "5[d c b a]"},
              {of(u"123", VT_UI1), "[3 2 1]"},
              {pageArray({object, Variant::null(), Variant(3.5)}), "[3.5 Null ?]"},
              {pageArray({object, Variant(Object())}, VT_DISPATCH), "[Nothing ?]"},
              {of(nullptr), "none"}};
  for (const auto& row : rows) {
    PageVariable variable(row.array, true);
    ArrayFunctions().reverse(variable.reference());
    EXPECT_EQ(shownArray(variable.value()), row.reversed);
  }
  PageVariable nested(pageArray({Variant(u"a"), of(u"bc"), Variant(u"d")}));
  try {
    ArrayFunctions().reverse(nested.reference());
    ADD_FAILURE() << "no error";
  } catch (const AutomationError& error) {
    EXPECT_EQ(error.number(), 5002);
    EXPECT_EQ(error.description(),
              u"ReverseArrayInPlace can reverse only arrays of simple data types.");
  }
  EXPECT_EQ(shownArray(nested.value()), "[a [b c] d]");
}

}  // namespace
}  // namespace quendal::test
