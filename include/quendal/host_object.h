// Objects that a C++ host makes of functions, for the library or a script to call by name: page
// contexts, collections, error objects.
//
//   const Object variables = HostObject()
//                                .defaultMember([&](HostObject::Arguments arguments) {
//                                  return Variant(valueOf(textOf(arguments[0])));
//                                })
//                                .elements([&] { return names(); })
//                                .object();
//   const Object request = HostObject()
//                              .className(u"IRequest")
//                              .value(u"TotalBytes", std::int32_t{0})
//                              .value(u"ServerVariables", variables)
//                              .object();
#pragma once

#include <quendal/object.h>

#include <cstddef>
#include <functional>
#include <limits>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace quendal {

/// How many arguments a member takes, the new value of a put not counted. A call with fewer or more
/// is error 450.
struct ArgumentCount {
  std::size_t least = 0;
  std::size_t most = std::numeric_limits<std::size_t>::max();
};

/// Describes an object, then makes it. Members are found by name in any case, and only so: there
/// are no named arguments and no function table. What a function throws as an AutomationError is
/// raised to the caller; bad_alloc is error 7 and any other exception 51.
class QUENDAL_EXPORT HostObject {
 public:
  /// In call order, references followed; omitted ones at the end are not there. A put has the new
  /// value last. Borrowed from the caller.
  using Arguments = std::span<const VARIANT>;
  using Call = std::function<Variant(Arguments)>;
  using Count = ArgumentCount;
  /// Gives the next element, or false at the end.
  using Next = std::function<bool(Variant& element)>;

  HostObject();

  /// A method, or a property with arguments. Without `put` it cannot be put; of that one the
  /// result is ignored.
  HostObject& member(std::u16string_view name, Call call, Call put = {}, Count count = {});
  /// A property without arguments.
  HostObject& property(std::u16string_view name, std::function<Variant()> get,
                       std::function<void(const VARIANT&)> put = {});
  /// A property that keeps its value and can be put. Objects of one description share it.
  HostObject& value(std::u16string_view name, Variant value);
  /// What is called or put without a name.
  HostObject& defaultMember(Call call, Call put = {}, Count count = {});
  /// A name for the default member.
  HostObject& defaultName(std::u16string_view name);

  /// What For Each visits; `begin`, or `list`, is called for each enumeration.
  HostObject& enumeration(std::function<Next()> begin);
  HostObject& elements(std::function<std::vector<Variant>()> list);
  HostObject& elements(std::vector<Variant> list);

  /// What a script sees as the object's type name; "Object" without one.
  HostObject& className(std::u16string_view name);
  /// A step before each call of a member and each question for the type's name, which refuses it
  /// when it throws.
  HostObject& beforeCalls(std::function<void()> step);

  /// A new object.
  [[nodiscard]] Object object() const;

 private:
  class Dispatch;
  struct Definition;
  std::shared_ptr<Definition> definition_;
};

}  // namespace quendal
