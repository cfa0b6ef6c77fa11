// Objects that a host makes of functions, as their callers see them.
#include <quendal/host_object.h>

#include <gtest/gtest.h>

#include <functional>
#include <span>
#include <stdexcept>
#include <string>

#include "base/utf8.h"

namespace quendal {
namespace {

using Arguments = HostObject::Arguments;

/// What a call gave, as text, or the number that it raised.
std::string outcome(const std::function<Variant()>& call) {
  try {
    return toUtf8(textOf(call()));
  } catch (const AutomationError& error) {
    return "error " + std::to_string(error.number());
  }
}

TEST(HostObject, MembersTakeWhatTheirDescriptionAllows) {
  std::u16string written;
  bool closed = false;
  const auto joined = [](Arguments arguments) {
    std::u16string text;
    for (const VARIANT& argument : arguments) text += textOf(argument) + u".";
    return Variant(text);
  };
  const auto write = [&](Arguments arguments) {
    written = textOf(joined(arguments));
    return Variant();
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
  VARIANT reference{};
  reference.vt = kVariantReference;
  reference.pvarVal = &variable;
  const struct {
    const char* what;
    std::function<Variant()> call;
    const char* outcome;
  } rows[] = {
      {"in any case, in order", [&] { return object.call(u"aNY", u"1", u"2"); }, "1.2."},
      {"omitted at the end",
       [&] { return object.call(u"Any", u"1", Variant::missing(), Variant::missing()); }, "1."},
      {"too few", [&] { return object.call(u"Pair"); }, "error 450"},
      {"too many", [&] { return object.call(u"Pair", 1, 2, 3); }, "error 450"},
      {"a property takes none", [&] { return object.call(u"Fixed", 1); }, "error 450"},
      {"a new value is not counted",
       [&] { return object.put(u"Pair", 1, 2, u"new"), Variant(written); }, "1.2.new."},
      {"nothing to put", [&] { return object.put(u"Fixed", 1), Variant(); }, "error 438"},
      {"a kept value", [&] { return object.put(u"Kept", u"new"), object.get(u"Kept"); }, "new"},
      {"by reference",
       [&] {
         const Variant held = Variant::attach(reference);
         return object.callWith(u"Any", std::span(&held, 1));
       },
       "by reference."},
      {"no such member", [&] { return object.get(u"None"); }, "error 438"},
      {"another exception", [&] { return object.call(u"Fails"); }, "error 51"},
      {"the default member", [&] { return object.get(u"Item", u"i"); }, "i."},
      {"refused", [&] { return closed = true, object.call(u"Any"); }, "error 70"},
  };
  std::u16string elements;
  object.forEach([&](const Variant& element) { elements += textOf(element); });
  EXPECT_EQ(elements, u"ab");
  for (const auto& row : rows) EXPECT_EQ(outcome(row.call), row.outcome) << row.what;
}

}  // namespace
}  // namespace quendal
