// A late-bound client of any automation object.
#pragma once

#include <quendal/variant.h>

#include <array>
#include <functional>
#include <span>
#include <string_view>
#include <utility>

namespace quendal {

/// Holds a reference to an object and calls its members by name, in any case.
///
///   std::u16string agent = textOf(request.get(u"ServerVariables", u"HTTP_USER_AGENT"));
///
/// Same size and layout as an `IDispatch*`. A null object raises 91 when it is used; an object
/// without the member raises 438; a failure of the object is passed on as it came.
class QUENDAL_EXPORT Object {
 public:
  using Arguments = std::span<const Variant>;

  Object() noexcept = default;
  /// Shares an object.
  explicit Object(IDispatch* object) noexcept;
  Object(const Object& other) noexcept : Object(other.object_) {}
  Object(Object&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Object& operator=(Object other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Object();

  /// Takes ownership of a reference.
  [[nodiscard]] static Object attach(IDispatch* object) noexcept;
  /// The object a value holds, references followed, null for Nothing. Raises 424 for anything
  /// that is no object, 430 for one that cannot be called by name.
  [[nodiscard]] static Object from(const VARIANT& value);

  /// Reads a property, or calls a method where there is no property of the name. Arguments to a
  /// property that takes none are applied to the default member of the object it returns, as a
  /// script host does. No member runs twice.
  template <class... Values>
  Variant get(std::u16string_view name, Values&&... arguments) const {
    const std::array<Variant, sizeof...(Values)> list{Variant(std::forward<Values>(arguments))...};
    return getWith(name, list);
  }
  /// Calls a method.
  template <class... Values>
  Variant call(std::u16string_view name, Values&&... arguments) const {
    const std::array<Variant, sizeof...(Values)> list{Variant(std::forward<Values>(arguments))...};
    return callWith(name, list);
  }
  Variant getWith(std::u16string_view name, Arguments arguments) const;
  Variant callWith(std::u16string_view name, Arguments arguments) const;
  void putWith(std::u16string_view name, Arguments indexesAndValue) const;
  /// The value of the default member. Raises 438 when there is none.
  [[nodiscard]] Variant defaultValue() const;
  /// Sets a property; indexes come before the value.
  template <class... Values>
  void put(std::u16string_view name, Values&&... indexesAndValue) const {
    const std::array<Variant, sizeof...(Values)> list{
        Variant(std::forward<Values>(indexesAndValue))...};
    putWith(name, list);
  }

  /// Visits the elements of a collection, as For Each does. Raises 451 for an object that is none.
  void forEach(const std::function<void(const Variant&)>& visit) const;

  explicit operator bool() const noexcept { return object_ != nullptr; }
  [[nodiscard]] IDispatch* dispatch() const noexcept { return object_; }
  [[nodiscard]] IDispatch* release() noexcept { return std::exchange(object_, nullptr); }

 private:
  Variant invoke(DISPID id, WORD flags, Arguments arguments) const;
  DISPID idOf(std::u16string_view name) const;

  IDispatch* object_ = nullptr;
};
static_assert(sizeof(Object) == sizeof(IDispatch*));

/// Visits what a script's For Each would: the elements of an array or of a collection, in order.
/// Raises 91 for Nothing, 451 for anything else that cannot be enumerated, and what a collection
/// raises on the way.
QUENDAL_EXPORT void forEach(const VARIANT& collection,
                            const std::function<void(const Variant&)>& visit);

}  // namespace quendal
