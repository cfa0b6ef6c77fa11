// How each C++ parameter and result type of a member crosses the boundary: its place in the
// function table, its conversion from a call by name, and its type in the interface.
#pragma once

#include <array>
#include <concepts>
#include <cstdint>
#include <span>
#include <string>
#include <type_traits>
#include <vector>

#include "core/class_description.h"
#include "core/dispatch.h"
#include "core/variant_ref.h"

namespace quendal {

/// An argument that a call by name cannot convert; becomes the call's argument error.
struct ArgumentError {
  HRESULT code;
  const VARIANT* argument;  // null when it is one that is not there
};

/// The arguments of one call by name, each at its parameter's position.
class CallFrame {
 public:
  explicit CallFrame(const MemberRow& row) noexcept : row_(row) {}

  /// Null when omitted, or when the caller said so with the missing-argument marker and the
  /// parameter is not a Variant.
  [[nodiscard]] VARIANT*& argument(std::size_t i) noexcept { return arguments_[i]; }
  [[nodiscard]] const VARIANT* argument(std::size_t i) const noexcept { return arguments_[i]; }
  /// The trailing arguments of a parameter array, in call order, as they came.
  [[nodiscard]] std::vector<VARIANT>& list() noexcept { return list_; }
  [[nodiscard]] const std::vector<VARIANT>& list() const noexcept { return list_; }

  /// The argument converted to a number, Boolean or text, or its default. Throws ArgumentError.
  [[nodiscard]] Variant plainArgument(std::size_t i, VARTYPE type) const;

 private:
  const MemberRow& row_;
  std::array<VARIANT*, kMaxParameters> arguments_{};
  std::vector<VARIANT> list_;
};

/// Enumerations of the type library: their interface name, found by argument-dependent lookup.
template <class E>
concept InterfaceEnumeration = std::is_enum_v<E> && requires(E e) {
  { interfaceNameOf(e) } -> std::convertible_to<std::u16string_view>;
};

/// A parameter type of members: `Abi` is what stands in the function table. `fromTable` makes of
/// that, and `fromCall` of an argument of a call by name, what is kept as long as the call runs and
/// converts to the parameter.
///
/// Foreign code runs during many calls and can change or clear the page's variables. So what came
/// by value is the call's own, or, in the function table, the caller's for the length of its call.
/// A Variant that came by reference is read where the member reads it; numbers, Booleans and, in a
/// call by name, texts are taken when it begins.
template <class P>
struct Parameter;

template <class A, InterfaceType Type, bool ByReference = false>
struct Crossing {
  using Abi = A;
  static constexpr TypeReference kType{Type};
  static constexpr bool kByReference = ByReference;
};

/// 16- and 32-bit numbers and Booleans: tag, and the field of a VARIANT.
template <class T>
struct Scalar;
template <>
struct Scalar<std::int16_t> {
  static constexpr VARTYPE kTag = VT_I2;
  static constexpr TypeReference kType{InterfaceType::Int16};
  static std::int16_t read(const VARIANT& value) noexcept { return value.iVal; }
};
template <>
struct Scalar<std::int32_t> {
  static constexpr VARTYPE kTag = VT_I4;
  static constexpr TypeReference kType{InterfaceType::Int32};
  static std::int32_t read(const VARIANT& value) noexcept { return value.lVal; }
};
template <>
struct Scalar<Boolean> {
  static constexpr VARTYPE kTag = VT_BOOL;
  static constexpr TypeReference kType{InterfaceType::Boolean};
  static Boolean read(const VARIANT& value) noexcept { return Boolean{value.boolVal}; }
};
template <InterfaceEnumeration E>
struct Scalar<E> {
  static constexpr VARTYPE kTag = VT_I4;
  static constexpr TypeReference kType{InterfaceType::Enumeration, interfaceNameOf(E{})};
  static E read(const VARIANT& value) noexcept { return static_cast<E>(value.lVal); }
};
template <class T>
concept IsScalar = requires {
  Scalar<T>::kTag;
};

template <IsScalar T>
struct Parameter<T> {
  using Abi = T;
  static constexpr TypeReference kType = Scalar<T>::kType;
  static constexpr bool kByReference = false;
  static T fromTable(T value) noexcept { return value; }
  static T fromCall(const CallFrame& frame, std::size_t i) {
    return Scalar<T>::read(frame.plainArgument(i, Scalar<T>::kTag));
  }
};

template <IsScalar T>
struct Parameter<Ref<T>> {
  using Abi = T*;
  static constexpr TypeReference kType = Scalar<T>::kType;
  static constexpr bool kByReference = true;
  static Ref<T> fromTable(T* variable) {
    if (variable == nullptr) throw AutomationError::passedOn(E_POINTER, {}, {});
    return {*variable, referenceTo(Scalar<T>::kTag, variable)};
  }
  static Ref<T> fromCall(const CallFrame& frame, std::size_t i) {
    const T value = Parameter<T>::fromCall(frame, i);
    return frame.argument(i) == nullptr ? Ref<T>(value) : Ref<T>(value, *frame.argument(i));
  }
};

template <class R>
requires std::derived_from<R, VariantRef>
struct Parameter<R&> : Crossing<VARIANT*, InterfaceType::Variant, true> {
  static R fromTable(VARIANT* variable) { return R(variable); }
  static R fromCall(const CallFrame& frame, std::size_t i) {
    return frame.argument(i) == nullptr ? R(nullptr) : R(*frame.argument(i));
  }
};
/// One that the member does not replace.
template <class R>
struct Parameter<const R&> : Parameter<R&> {};

template <>
struct Parameter<const VARIANT&> : Crossing<VARIANT, InterfaceType::Variant> {
  /// The caller's value; a reference's is copied.
  class Value {
   public:
    explicit Value(const VARIANT& value);
    Value(const Value&) = delete;
    Value& operator=(const Value&) = delete;
    operator const VARIANT&() const noexcept { return *value_; }

   private:
    Variant copy_;
    const VARIANT* value_;
  };
  static Value fromTable(const VARIANT& value) { return Value(value); }
  static Variant fromCall(const CallFrame& frame, std::size_t i);
};

template <>
struct Parameter<std::u16string_view> : Crossing<BSTR, InterfaceType::String> {
  static std::u16string_view fromTable(BSTR text) noexcept { return viewOf(text); }
  static Text fromCall(const CallFrame& frame, std::size_t i) {
    return Text::attach(frame.plainArgument(i, VT_BSTR).release().bstrVal);
  }
};

template <>
struct Parameter<TextRef> : Crossing<BSTR*, InterfaceType::String, true> {
  static TextRef fromTable(const BSTR* text) noexcept {
    return TextRef(reinterpret_cast<const Text*>(text));
  }
  static Text fromCall(const CallFrame& frame, std::size_t i) {
    return Parameter<std::u16string_view>::fromCall(frame, i);
  }
};

template <>
struct Parameter<const Object&> : Crossing<IDispatch**, InterfaceType::Dispatch, true> {
  static Object fromTable(IDispatch* const* object) noexcept {
    return Object(object == nullptr ? nullptr : *object);
  }
  static Object fromCall(const CallFrame& frame, std::size_t i);
};

/// The trailing arguments of a call, in call order. Elements may be references: each is read when
/// the member comes to it, and what was read is kept only as a copy.
using ArgumentList = std::span<const VARIANT>;

template <>
struct Parameter<ArgumentList> : Crossing<SAFEARRAY**, InterfaceType::VariantList, true> {
  /// Keeps the caller's array locked. Raises 13 for one that is no list of Variants.
  class Locked {
   public:
    explicit Locked(SAFEARRAY* array);
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;
    ~Locked();
    operator ArgumentList() const noexcept { return list_; }

   private:
    SAFEARRAY* array_;  // null for none
    ArgumentList list_;
  };
  static Locked fromTable(SAFEARRAY* const* array) {
    return Locked(array == nullptr ? nullptr : *array);
  }
  static ArgumentList fromCall(const CallFrame& frame, std::size_t) noexcept {
    return frame.list();
  }
};

/// Results: their place in the function table and how they become that or a Variant.
template <class R>
struct Result;

template <IsScalar T>
struct Result<T> {
  using Abi = T;
  static constexpr TypeReference kType = Scalar<T>::kType;
  static Variant toVariant(T value) noexcept { return Variant(value); }
  static T toTable(T value) noexcept { return value; }
};

template <>
struct Result<std::u16string> {
  using Abi = BSTR;
  static constexpr TypeReference kType{InterfaceType::String};
  static Variant toVariant(const std::u16string& text) { return Variant(text); }
  static BSTR toTable(const std::u16string& text) { return newBstr(text); }
};

template <>
struct Result<Variant> {
  using Abi = VARIANT;
  static constexpr TypeReference kType{InterfaceType::Variant};
  static Variant toVariant(Variant&& value) noexcept { return std::move(value); }
  static VARIANT toTable(Variant&& value) noexcept { return value.release(); }
};

template <class C>
struct Result<Owned<C>> {
  using Abi = IDispatch*;
  static constexpr TypeReference kType{InterfaceType::Class, C::kClassName};
  static Variant toVariant(const Owned<C>& object) noexcept { return Variant(object.object()); }
  static IDispatch* toTable(const Owned<C>& object) noexcept { return object.object().release(); }
};

}  // namespace quendal
