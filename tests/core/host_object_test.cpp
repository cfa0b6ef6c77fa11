// Objects that a host makes of functions, as their callers see them.
#include <quendal/host_object.h>

#include <gtest/gtest.h>

#include <functional>
#include <span>
#include <stdexcept>
#include <string>

#include "tests/core/raw_call.h"
#include "tests/support/outcome.h"

namespace quendal {
namespace {

using Arguments = HostObject::Arguments;

TEST(HostObject, MembersTakeWhatTheirDescriptionAllows) {
  std::u16string written;
  bool closed = false;
  const auto joined = [](Arguments arguments) {
    std::u16string text;
    for (const VARIANT& argument : arguments) text += textOf(argument) + u".";
    return Variant(text);
  };
  const auto write = [&](Arguments arguments) {
    return written = textOf(joined(arguments)), Variant();
  };
  const Object object =
      HostObject()
          .className(u"Shelf")
          .member(u"Any", joined)
          .member(u"Pair", joined, write, {1, 2})
          .property(u"Fixed", [] { return Variant(u"f"); })
          .value(u"Kept", u"old")
          .member(u"Fails", [](Arguments) -> Variant { throw std::runtime_error("x"); })
          .defaultMember(joined)
          .defaultName(u"Item")
          .elements({Variant(u"a"), Variant(u"b")})
          .beforeCalls([&] {
            if (closed) throw AutomationError(70);
          })
          .object();
  EXPECT_EQ(typeNameOf(Variant(object)), u"Shelf");
  Variant variable(u"by reference");
  const std::vector<Variant> held = {test::referenceTo(variable)};
  const Variant missing = Variant::missing();
  const std::pair<const char*, std::function<Variant()>> rows[] = {
      {"1.2.", [&] { return object.call(u"aNY", u"1", u"2", missing, missing); }},
      {"error 450", [&] { return object.call(u"Pair"); }},
      {"error 450", [&] { return object.call(u"Pair", 1, 2, 3); }},
      {"error 450", [&] { return object.call(u"Fixed", 1); }},
      // Its new value is not counted.
      {"1.2.new.", [&] { return object.put(u"Pair", 1, 2, u"new"), Variant(written); }},
      {"error 438", [&] { return object.put(u"Fixed", 1), Variant(); }},
      {"new", [&] { return object.put(u"Kept", u"new"), object.get(u"Kept"); }},
      {"by reference.", [&] { return object.callWith(u"Any", held); }},
      {"error 438", [&] { return object.get(u"None"); }},
      {"error 51", [&] { return object.call(u"Fails"); }},
      {"i.", [&] { return object.get(u"Item", u"i"); }},
      {"error 70", [&] { return closed = true, object.call(u"Any"); }},
  };
  std::u16string elements;
  object.forEach([&](const Variant& element) { elements += textOf(element); });
  EXPECT_EQ(elements, u"ab");
  int index = 0;
  for (const auto& [expected, call] : rows)
    EXPECT_EQ(test::textOrError([&] { return toUtf8(textOf(call())); }), expected) << index++;
}

TEST(HostObject, AMemberMayLetGoOfItsObject) {
  Object last;
  const auto letGo = [&last, text = std::u16string(u"what the function holds")](Arguments) {
    last = {};
    return Variant(text);
  };
  last = HostObject().defaultMember(letGo).object();
  Variant result;
  DISPPARAMS none{};
  last.dispatch()->Invoke(DISPID_VALUE, IID_NULL, 0, DISPATCH_PROPERTYGET, &none, &result, nullptr,
                          nullptr);
  EXPECT_FALSE(last);
  EXPECT_EQ(textOf(result), u"what the function holds");
}

}  // namespace
}  // namespace quendal
