// The members of `ClsArray` but Sort, on arrays of every shape.
#include <gtest/gtest.h>

#include <memory>
#include <tuple>

#include "arrays/array_functions.h"
#include "core/dispatch.h"
#include "tests/automation/values.h"
#include "tests/support/script_object.h"

namespace quendal::test {
namespace {

using Member = Variant (*)(VariantRef&);

Variant push(VariantRef& array) { return ArrayFunctions().push(array, Variant(u"x")), Variant(); }
Variant pop(VariantRef& array) { return ArrayFunctions().pop(array); }
Variant shift(VariantRef& array) { return ArrayFunctions().shift(array); }
Variant unshift(VariantRef& array) {
  return ArrayFunctions().unshift(array, Variant(u"x")), Variant();
}

/// What a member gives or raises, and what it leaves.
std::string effectOf(Member member, PageVariable& variable) {
  std::string result;
  const int error = raisedBy([&] { result = shownArray(member(variable.reference)); });
  if (error != 0) result = "#" + std::to_string(error);
  return result + ", " + shownArray(variable.variable);
}

// A lower bound stays, so that the bounds 0 to n are refused; typed elements take what converts.
TEST(StackMembers, ChangeTheVariableHoweverItIsPassed) {
  const auto expect = [](Member member, const Variant& array, const char* effect) {
    for (const auto& [typed, twice] : kWays) {
      PageVariable page(array, typed, twice);
      EXPECT_EQ(effectOf(member, page), effect);
    }
  };
  const std::tuple<Member, const char16_t*, const char*> rows[] = {
      {push, nullptr, "~, [x]"},    {push, u"", "~, [x]"},
      {push, u"ab", "~, [a b x]"},  {pop, nullptr, "~, none"},
      {pop, u"ab", "b, [a]"},       {pop, u"a", "a, [a]"},
      {shift, nullptr, "~, none"},  {shift, u"abc", "a, [b c]"},
      {shift, u"a", "none, none"},  {unshift, nullptr, "~, none"},
      {unshift, u"ab", "~, [x b]"}, {unshift, u"abcde", "~, [x d d d e]"}};
  for (const auto& [member, elements, effect] : rows) expect(member, of(elements), effect);
  const auto from = [](LONG lower) { return of(u"abc", VT_VARIANT, lower); };
  expect(push, from(1), "~, 1[a b c]");
  expect(pop, from(1), "c, 1[a b c]");
  expect(shift, from(1), "#9, 1[a b c]");
  expect(unshift, from(1), "~, 1[b b c]");
  expect(shift, from(-1), "#9, -1[a c c]");
  expect(unshift, from(-1), "~, -1[a x c]");
  expect(push, of(nullptr, VT_I4), "~, [0]");
  expect(push, of(u"12", VT_I4), "~, [1 2 0]");
  expect(shift, of(u"12", VT_BSTR), "1, [2]");
  expect(unshift, of(u"123", VT_R8), "~, [2 2 3]");
  expect(push, twoDimensions(), "~, [~ ~]");
  expect(shift, twoDimensions(), "#9, [~ ~]");
  // Upper bounds without 32 bits, or that cannot grow.
  expect(push, of(u"", VT_VARIANT, INT32_MIN), "~, -2147483648[]");
  expect(push, of(u"a", VT_VARIANT, INT32_MAX), "~, 2147483647[a]");
}

TEST(StackMembers, DoWhatTheyCanWithAFixedArrayAndNothingToOneByValue) {
  const std::tuple<Member, const char16_t*, const char*> rows[] = {{push, u"ab", "~, [a b]"},
                                                                   {pop, u"ab", "b, [a b]"},
                                                                   {shift, u"a", "#10, [a]"},
                                                                   {shift, u"abc", "#10, [b c c]"}};
  for (const auto& [member, elements, effect] : rows) {
    PageVariable page(of(elements), true, true);
    page.variable.parray->fFeatures |= FADF_STATIC | FADF_FIXEDSIZE;
    EXPECT_EQ(effectOf(member, page), effect);
    page.variable.parray->fFeatures ^= FADF_STATIC | FADF_FIXEDSIZE;
    Variant literal = of(u"abc");
    VariantRef reference(literal);
    member(reference);
    EXPECT_EQ(shownArray(literal), "[a b c]");
  }
}

TEST(Bounds, AreThirtyTwoBitsOrTheSixteenBitMinusOne) {
  const std::tuple<Variant, int, int, VARTYPE> rows[] = {
      {of(u"12", VT_I4, -7), -7, -6, VT_I4}, {of(u""), 0, -1, VT_I4}, {of(nullptr), -1, -1, VT_I2}};
  for (const auto& [array, lower, upper, type] : rows) {
    PageVariable page(array);
    const Variant bounds[] = {ArrayFunctions().getLBound(page.reference),
                              ArrayFunctions().getUBound(page.reference)};
    EXPECT_EQ(std::pair(int32Of(bounds[0]), int32Of(bounds[1])), std::pair(lower, upper));
    EXPECT_EQ(std::pair(bounds[0].vt, bounds[1].vt), std::pair(type, type));
  }
}

TEST(Members, RefuseWhatIsNoArrayWithTheirOwnName) {
  const Object arrays = Owned<ArrayFunctions>::make().object();
  const Variant one(std::int32_t{1});
  const std::pair<const char16_t*, std::size_t> members[] = {
      {u"GetUBound", 0}, {u"GetLBound", 0}, {u"Push", 1},   {u"Pop", 0},     {u"Shift", 0},
      {u"Unshift", 1},   {u"Slice", 2},     {u"Splice", 2}, {u"Reverse", 0}, {u"Sort", 0}};
  for (const auto& [member, others] : members) {
    std::vector<VARIANT> arguments(1 + others, one);
    arguments[0] = Variant::missing();
    EXPECT_EQ(rawCall(arrays, member, arguments).error, u"5002 QUENDAL_REPORTS_ASP: Array." +
                                                            std::u16string(member) +
                                                            u": [TypeName=Error] is not an array");
  }
}

TEST(StackMembers, MoveObjectsAsReferencesExceptWhereShiftAssigns) {
  ArrayFunctions arrays;
  const Object plain = ScriptObject().object();
  const Object valued = ScriptObject().defaultMember([](auto) { return Variant(u"v"); }).object();
  PageVariable variable(of(nullptr));
  VariantRef& array = variable.reference;
  for (const Object& object : {valued, plain, valued}) arrays.push(array, Variant(object));
  EXPECT_EQ(arrays.pop(array).pdispVal, valued.dispatch());
  EXPECT_EQ(shownArray(arrays.shift(array)), "v");
  arrays.push(array, Variant(u"b"));
  EXPECT_EQ(raisedBy([&] { arrays.shift(array); }), 438);
  EXPECT_EQ(shownArray(variable.variable), "[? b]");
  arrays.unshift(array, Variant(valued));
  EXPECT_EQ(ArrayView(variable.variable).at(0).pdispVal, valued.dispatch());

  PageVariable numbers(of(u"12", VT_I4));
  arrays.push(numbers.reference, Variant(valued));  // an object is not turned into a number
  EXPECT_EQ(shownArray(numbers.variable), "[1 2 0]");
}

TEST(StackMembers, TakeElementsOfTheArrayItselfAndTheWholeArray) {
  ArrayFunctions arrays;
  PageVariable variable(of(u"ab"));
  arrays.push(variable.reference, variable.argument());
  arrays.unshift(variable.reference, variable.argument());
  EXPECT_EQ(shownArray(variable.variable), "[[a b [a b]] b [a b]]");
  for (int i = 0; i < 100; ++i) {
    const VARIANT borrowed = ArrayView(variable.variable).at(1);
    arrays.push(variable.reference, borrowed);
  }
  EXPECT_EQ(shownArray(arrays.pop(variable.reference)), "b");
}

/// What runs a step as its last owner goes.
template <class Step>
std::shared_ptr<void> witness(Step step) {
  return {nullptr, [step](void*) { step(); }};
}

// An object that, as it is let go, looks at the array that it was an element of.
TEST(StackMembers, HoldWhenAnElementLooksBackAsItGoes) {
  ArrayFunctions arrays;
  PageVariable variable(of(u"abc"));
  std::string seen;
  const auto place = [&] {
    const auto value = [last = witness([&] { seen += shownArray(variable.variable); })](auto) {
      return Variant(u"d");
    };
    arrays.unshift(variable.reference, Variant(ScriptObject().defaultMember(value).object()));
  };
  place();
  arrays.unshift(variable.reference, Variant(u"x"));
  EXPECT_EQ(std::exchange(seen, ""), "[b b c]");
  place();
  EXPECT_EQ(shownArray(arrays.shift(variable.reference)), "d");
  EXPECT_EQ(seen, "[b c]");
  EXPECT_EQ(shownArray(variable.variable), "[b c]");
}

// The variable is an element of another array, which an object frees when it is asked or goes.
TEST(StackMembers, HoldWhenTheVariableIsFreedMeanwhile) {
  for (const Member member : {shift, unshift}) {
    Variant outer = arrayOf({of(u"abc")});
    VARIANT& variable = *static_cast<VARIANT*>(outer.parray->pvData);
    VARIANT inner = variable;
    const auto clear = [&outer] { VariantClear(&outer); };
    {
      const auto value = [last = witness(clear), isAsked = member == shift, clear](auto) {
        if (isAsked) clear();
        return Variant(u"d");
      };
      const ArrayView view(inner);
      static_cast<void>(Variant::attach(view.take(0)));
      view.put(0, Variant(ScriptObject().defaultMember(value).object()).release());
    }
    VARIANT argument = referenceTo(variable);
    VariantRef reference(argument);
    member(reference);
    EXPECT_EQ(outer.vt, VT_EMPTY);
    // What is locked stays when its holder goes.
    EXPECT_EQ(shownArray(inner), member == shift ? "[b c]" : "[x b c]");
    EXPECT_EQ(VariantClear(&inner), S_OK);
  }
}

TEST(Slice, TakesPositionsFromEitherEnd) {
  const std::tuple<Variant, int, int, const char*, const char*> rows[] = {
      {of(u"abcde"), 1, 3, "[b c]", "[a d e]"},
      {of(u"abcde"), -2, 5, "[d e]", "[a b c]"},
      {of(u"abcde"), 3, 1, "[]", "[a b c d e]"},
      {of(u"abcde"), INT32_MIN, INT32_MAX, "[a b c d e]", "[]"},
      {of(u"abcde", VT_VARIANT, 3), 1, 3, "[b c]", "3[a d e]"},
      {of(u"123", VT_I4), 1, 2, "[2]", "[1 3]"},
      {of(nullptr), 0, 1, "[]", "none"}};
  for (const auto& [array, start, end, taken, rest] : rows) {
    for (const auto& [typed, twice] : kWays) {
      PageVariable page(array, typed, twice);
      EXPECT_EQ(shownArray(ArrayFunctions().slice(page.reference, Boolean::False, start, end)),
                taken);
      const Variant slice = ArrayFunctions().slice(page.reference, Boolean::True, start, end);
      EXPECT_EQ(shownArray(slice), taken);
      EXPECT_EQ(slice.vt, kVariantArray);
      EXPECT_EQ(shownArray(page.variable), rest);
    }
  }
}

/// Splices these one-letter texts in.
std::string spliced(PageVariable& page, std::int32_t offset, std::int32_t length,
                    const char16_t* values) {
  const Variant array = of(values);
  const ArrayView view(array);
  std::vector<VARIANT> elements;
  for (std::size_t i = 0; i < view.size(); ++i) elements.push_back(view.at(i));
  return shownArray(ArrayFunctions().splice(page.reference, offset, length, elements));
}

TEST(Splice, RemovesAndInserts) {
  const std::tuple<Variant, int, int, const char16_t*, const char*, const char*> rows[] = {
      {of(u"abcde"), 1, 2, u"", "[b c]", "[a d e]"},
      {of(u"abcde"), 0, 1, u"", "[a]", "[b c d e]"},
      {of(u"abcde"), 1, 1, u"xyz", "[b]", "[a x y z c d e]"},
      {of(u"abcde"), 5, 3, u"xy", "[]", "[a b c d e x y]"},
      {of(u"abcde"), -1, 9, u"x", "[e]", "[a b c d x]"},
      {of(u"abcde"), 2, -4, u"x", "[]", "[a b x c d e]"},
      {of(u"abc", VT_VARIANT, -4), 1, 1, u"xy", "[b]", "-4[a x y c]"},
      {of(u"123", VT_R8), 0, 1, u"456", "[1]", "[4 5 6 2 3]"},
      {of(nullptr), 3, 3, u"xy", "[]", "[x y]"},
      {of(nullptr), 0, 0, u"", "[]", "none"}};
  for (const auto& [array, offset, length, values, removed, left] : rows) {
    for (const auto& [typed, twice] : kWays) {
      PageVariable page(array, typed, twice);
      EXPECT_EQ(spliced(page, offset, length, values), removed);
      EXPECT_EQ(shownArray(page.variable), left);
    }
  }
  PageVariable own(of(u"abc"));
  const std::vector<VARIANT> values = {ArrayView(own.variable).at(0), own.argument()};
  EXPECT_EQ(shownArray(ArrayFunctions().splice(own.reference, 0, 2, values)), "[a b]");
  EXPECT_EQ(shownArray(own.variable), "[a [a b c] c]");
}

TEST(Splice, ChangesNothingWhenItFails) {
  ArrayFunctions arrays;
  PageVariable page(of(u"123", VT_I4), true);
  EXPECT_EQ(raisedBy([&] { spliced(page, 0, 3, u"xy"); }), 13);
  ++page.variable.parray->cLocks;
  EXPECT_EQ(raisedBy([&] { spliced(page, 0, 2, u""); }), 10);
  EXPECT_EQ(raisedBy([&] { arrays.slice(page.reference, Boolean::True, 0, 1); }), 10);
  EXPECT_EQ(shownArray(page.variable), "[1 2 3]");
  EXPECT_EQ(spliced(page, 1, 2, u"89"), "[2 3]");  // as many in as out needs no other bounds
  EXPECT_EQ(shownArray(page.variable), "[1 8 9]");
  --page.variable.parray->cLocks;

  PageVariable last(of(u"a", VT_VARIANT, INT32_MAX));
  EXPECT_EQ(raisedBy([&] { spliced(last, 0, 0, u"89"); }), 9);
  EXPECT_EQ(shownArray(last.variable), "2147483647[a]");

  PageVariable square(twoDimensions());
  EXPECT_EQ(raisedBy([&] { spliced(square, 0, 1, u""); }), 9);
  EXPECT_EQ(raisedBy([&] { arrays.slice(square.reference, Boolean::False, 0, 1); }), 9);
  EXPECT_EQ(raisedBy([&] { arrays.reverse(square.reference); }), 9);
}

TEST(Reverse, TurnsSimpleValuesAndObjectsRound) {
  const Variant object(ScriptObject().object());
  const std::pair<Variant, const char*> rows[] = {
      {of(u"abcd", VT_BSTR, 5), "5[d c b a]"},
      {of(u"123", VT_UI1), "[3 2 1]"},
      {arrayOf({object, Variant::null(), Variant(3.5)}), "[3.5 Null ?]"},
      {arrayOf({object, Variant(Object())}, VT_DISPATCH), "[Nothing ?]"},
      {of(nullptr), "none"}};
  for (const auto& [array, reversed] : rows) {
    PageVariable page(array, true);
    ArrayFunctions().reverse(page.reference);
    EXPECT_EQ(shownArray(page.variable), reversed);
  }
  PageVariable nested(arrayOf({Variant(u"a"), of(u"bc"), Variant(u"d")}));
  EXPECT_EQ(rawCall(Owned<ArrayFunctions>::make().object(), u"Reverse", {nested.argument()}).error,
            u"5002 QUENDAL_REPORTS_ASP: "
            u"ReverseArrayInPlace can reverse only arrays of simple data types.");
  EXPECT_EQ(shownArray(nested.variable), "[a [b c] d]");
}

}  // namespace
}  // namespace quendal::test
