// Bounds and stack members on arrays of every shape.
#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "arrays/array_functions.h"
#include "core/dispatch.h"
#include "tests/arrays/page_arrays.h"
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
  const int error = raisedBy([&] { result = shownArray(member(variable.reference())); });
  if (error != 0) result = "#" + std::to_string(error);
  return result + ", " + shownArray(variable.value());
}

TEST(StackMembers, ChangeTheVariableHoweverItIsPassed) {
  const struct {
    Member member;
    const char16_t* elements;
    const char* effect;
  } rows[] = {{push, nullptr, "~, [x]"},    {push, u"", "~, [x]"},
              {push, u"ab", "~, [a b x]"},  {pop, nullptr, "~, none"},
              {pop, u"ab", "b, [a]"},       {pop, u"a", "a, [a]"},
              {shift, nullptr, "~, none"},  {shift, u"abc", "a, [b c]"},
              {shift, u"a", "none, none"},  {unshift, nullptr, "~, none"},
              {unshift, u"ab", "~, [x b]"}, {unshift, u"abcde", "~, [x d d d e]"}};
  for (const auto& row : rows) {
    inEveryPassing(of(row.elements), [&](PageVariable& variable) {
      EXPECT_EQ(effectOf(row.member, variable), row.effect);
    });
  }
}

// A lower bound stays, so that the bounds 0 to n are refused; typed elements take what converts.
TEST(StackMembers, DoWhatTheHostLetsThemWithOtherShapes) {
  enum Bounds { Free, Fixed, Locked };
  const auto from = [](LONG lower) { return of(u"abc", VT_VARIANT, lower); };
  const struct {
    Member member;
    Bounds bounds;
    Variant array;
    const char* effect;
  } rows[] = {{push, Fixed, of(u"ab"), "~, [a b]"},
              {pop, Fixed, of(u"ab"), "b, [a b]"},
              {shift, Fixed, of(u"ab"), "#10, [b b]"},
              {shift, Fixed, of(u"a"), "#10, [a]"},
              {shift, Locked, of(u"abc"), "#10, [b c c]"},
              {push, Free, from(1), "~, 1[a b c]"},
              {pop, Free, from(1), "c, 1[a b c]"},
              {shift, Free, from(1), "#9, 1[a b c]"},
              {unshift, Free, from(1), "~, 1[b b c]"},
              {shift, Free, from(-1), "#9, -1[a c c]"},
              {unshift, Free, from(-1), "~, -1[a x c]"},
              // Their upper bounds have no 32 bits, or none more.
              {push, Free, of(u"", VT_VARIANT, INT32_MIN), "~, -2147483648[]"},
              {push, Free, of(u"a", VT_VARIANT, INT32_MAX), "~, 2147483647[a]"},
              {push, Free, twoDimensions(), "~, [~ ~]"},
              {shift, Free, twoDimensions(), "#9, [~ ~]"},
              {push, Free, of(nullptr, VT_BSTR), "~, [x]"},
              {push, Free, of(u"12", VT_I4), "~, [1 2 0]"},
              {shift, Free, of(u"12", VT_BSTR), "1, [2]"},
              {unshift, Free, of(u"1234", VT_R8), "~, [3 3 3 4]"}};
  for (const auto& row : rows) {
    PageVariable variable(row.array, true, true);
    SAFEARRAY* const array = variable.array();
    if (row.bounds == Fixed) array->fFeatures |= FADF_STATIC | FADF_FIXEDSIZE;
    if (row.bounds == Locked) ++array->cLocks;
    EXPECT_EQ(effectOf(row.member, variable), row.effect);
    if (row.bounds == Fixed) array->fFeatures ^= FADF_STATIC | FADF_FIXEDSIZE;
    if (row.bounds == Locked) --array->cLocks;
  }
  Variant literal = of(u"abc");
  for (const Member member : {push, pop, shift, unshift}) {
    VariantRef reference(literal);
    member(reference);
    EXPECT_EQ(shownArray(literal), "[a b c]");
  }
}

TEST(Bounds, AreThirtyTwoBitsOrTheSixteenBitMinusOne) {
  const struct {
    Variant array;
    std::int32_t lower, upper;
    VARTYPE type;
  } rows[] = {{of(u"ab"), 0, 1, VT_I4},
              {of(u""), 0, -1, VT_I4},
              {of(u"1", VT_I4, -7), -7, -7, VT_I4},
              {of(nullptr), -1, -1, VT_I2}};
  for (const auto& row : rows) {
    PageVariable variable(row.array);
    const Variant lower = ArrayFunctions().getLBound(variable.reference());
    const Variant upper = ArrayFunctions().getUBound(variable.reference());
    EXPECT_EQ(std::pair(lower.vt, int32Of(lower)), std::pair(row.type, row.lower));
    EXPECT_EQ(std::pair(upper.vt, int32Of(upper)), std::pair(row.type, row.upper));
  }
}

TEST(Members, RefuseWhatIsNoArrayWithTheirOwnName) {
  const Object arrays = Owned<ArrayFunctions>::make().object();
  const Variant one(std::int32_t{1});
  const struct {
    const char16_t* member;
    std::size_t arguments;
    Variant value;
    const char16_t* typeName;
  } rows[] = {{u"GetUBound", 0, Variant(u"text"), u"String"},
              {u"GetLBound", 0, Variant(), u"Empty"},
              {u"Push", 1, Variant::null(), u"Null"},
              {u"Pop", 0, Variant(2.5), u"Double"},
              {u"Shift", 0, Variant(ScriptObject().object()), u"Object"},
              {u"Unshift", 1, Variant(Object()), u"Nothing"},
              {u"Slice", 2, Variant::missing(), u"Error"},
              {u"Splice", 2, Variant(Boolean::True), u"Boolean"},
              {u"Reverse", 0, one, u"Long"},
              {u"Sort", 0, Variant(u"text"), u"String"}};
  for (const auto& row : rows) {
    std::vector<VARIANT> arguments(1 + row.arguments, one);
    arguments[0] = row.value;
    EXPECT_EQ(rawCall(arrays, row.member, arguments).error,
              std::u16string(u"5002 QUENDAL_REPORTS_ASP: Array.") + row.member + u": [TypeName=" +
                  row.typeName + u"] is not an array");
  }
}

TEST(StackMembers, MoveObjectsAsReferencesExceptWhereShiftAssigns) {
  ArrayFunctions arrays;
  const Object plain = ScriptObject().object();
  const Object valued = ScriptObject().defaultMember([](auto) { return Variant(u"v"); }).object();
  PageVariable variable(of(nullptr));
  VariantRef& array = variable.reference();
  for (const Object& object : {valued, plain, valued}) arrays.push(array, Variant(object));
  EXPECT_EQ(arrays.pop(array).pdispVal, valued.dispatch());
  EXPECT_EQ(shownArray(arrays.shift(array)), "v");
  arrays.push(array, Variant(u"b"));
  EXPECT_EQ(raisedBy([&] { arrays.shift(array); }), 438);
  EXPECT_EQ(shownArray(variable.value()), "[? b]");
  arrays.unshift(array, Variant(valued));
  EXPECT_EQ(ArrayView(variable.value()).at(0).pdispVal, valued.dispatch());

  PageVariable numbers(of(u"12", VT_I4));
  arrays.push(numbers.reference(), Variant(valued));  // an object is not turned into a number
  EXPECT_EQ(shownArray(numbers.value()), "[1 2 0]");
}

TEST(StackMembers, TakeElementsOfTheArrayItselfAndTheWholeArray) {
  ArrayFunctions arrays;
  PageVariable variable(of(u"ab"));
  arrays.push(variable.reference(), variable.argument());
  arrays.unshift(variable.reference(), variable.argument());
  EXPECT_EQ(shownArray(variable.value()), "[[a b [a b]] b [a b]]");
  for (int i = 0; i < 100; ++i) {
    const VARIANT borrowed = ArrayView(variable.value()).at(1);
    arrays.push(variable.reference(), borrowed);
  }
  EXPECT_EQ(shownArray(arrays.pop(variable.reference())), "b");
}

struct Witness {
  std::function<void()> look;
  ~Witness() { look(); }
};

// An object that, as it is let go, looks at the array that it was an element of.
TEST(StackMembers, HoldWhenAnElementLooksBackAsItGoes) {
  ArrayFunctions arrays;
  PageVariable variable(of(u"abc"));
  std::string seen;
  const auto place = [&] {
    const auto witness = std::make_shared<Witness>();
    witness->look = [&] { seen += shownArray(variable.value()); };
    const auto value = [witness](auto) { return Variant(u"d"); };
    arrays.unshift(variable.reference(), Variant(ScriptObject().defaultMember(value).object()));
  };
  place();
  arrays.unshift(variable.reference(), Variant(u"x"));
  EXPECT_EQ(std::exchange(seen, ""), "[b b c]");
  place();
  EXPECT_EQ(shownArray(arrays.shift(variable.reference())), "d");
  EXPECT_EQ(seen, "[b c]");
  EXPECT_EQ(shownArray(variable.value()), "[b c]");
}

// The variable is an element of another array, which an object frees when it is asked or goes.
TEST(StackMembers, HoldWhenTheVariableIsFreedMeanwhile) {
  for (const Member member : {shift, unshift}) {
    Variant outer = pageArray({of(u"abc")});
    VARIANT& variable = *static_cast<VARIANT*>(outer.parray->pvData);
    VARIANT inner = variable;
    {
      const auto witness = std::make_shared<Witness>();
      witness->look = [&outer] { VariantClear(&outer); };
      const auto value = [witness, isAsked = member == shift](auto) {
        if (isAsked) witness->look();
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

}  // namespace
}  // namespace quendal::test
