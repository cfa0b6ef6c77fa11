// Automation objects made of lambdas, for everything that the library calls by name: page
// contexts, collections, error objects.
//
//   const Object request = ScriptObject()
//                              .value(u"TotalBytes", std::int32_t{12})
//                              .member(u"MapPath", [](ScriptObject::Arguments arguments) {
//                                return Variant(u"C:\\site\\" + textOf(arguments[0]));
//                              })
//                              .object();
#pragma once

#include <quendal/object.h>

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quendal::test {

/// Describes an object, then makes it. Names are found in any case. What a lambda throws as an
/// AutomationError is raised to the caller.
class ScriptObject {
 public:
  /// In call order; a put has the new value last. Borrowed, references not followed.
  using Arguments = std::span<const VARIANT>;
  using Call = std::function<Variant(Arguments)>;
  /// Gives the next element, or false at the end; may throw in the middle.
  using Next = std::function<bool(Variant& element)>;

  ScriptObject();

  /// A property that keeps its value and can be put. With arguments a read is error 450, as for
  /// any plain property.
  ScriptObject& value(std::u16string_view name, Variant value);
  /// A method, or a property with arguments.
  ScriptObject& member(std::u16string_view name, Call call);
  /// What a put of the property runs; its result is ignored.
  ScriptObject& onPut(std::u16string_view name, Call call);
  /// The default member.
  ScriptObject& defaultMember(Call call);
  /// What For Each visits. `begin` is called for each enumeration.
  ScriptObject& elements(std::vector<Variant> elements);
  ScriptObject& enumeration(std::function<Next()> begin);

  /// A new object. Objects of one description share the values of its properties.
  [[nodiscard]] Object object() const;

 private:
  class Dispatch;
  struct Definition;
  std::shared_ptr<Definition> definition_;
};

/// A zero-based array of values, as a script's `Array(...)`.
[[nodiscard]] Variant arrayOf(const std::vector<Variant>& elements);

}  // namespace quendal::test
