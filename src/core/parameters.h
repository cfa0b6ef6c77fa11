// How each C++ parameter and result type of a member crosses the boundary: its place in the
// function table, its conversion from a call by name, and its type in the interface.
#pragma once

#include <concepts>
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

  [[nodiscard]] const ParameterRow& parameter(std::size_t i) const noexcept {
    return row_.parameterRows[i];
  }
  /// Null when omitted, or when the caller said so with the missing-argument marker and the
  /// parameter is not a Variant.
  [[nodiscard]] VARIANT*& argument(std::size_t i) noexcept { return arguments_[i]; }
  /// The trailing arguments of a parameter array, in call order, as they came.
  [[nodiscard]] std::vector<VARIANT>& list() noexcept { return list_; }

  /// The argument converted to a plain type, or its default. Throws ArgumentError.
  [[nodiscard]] Variant plainArgument(std::size_t i, VARTYPE type) const;
  /// The argument's text, or its default, kept in `own`. Throws ArgumentError.
  const Text& textArgument(std::size_t i, Text& own) const;

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

/// A parameter type of members: `Abi` is what stands in the function table; `Argument` is made of
/// that, or of a call by name, lives as long as the call and gives the member what it takes. An
/// argument with `writeBack` hands what the member changed to the caller of a call by name.
///
/// Foreign code runs during many calls and can change or clear the page's variables. So what came
/// by value is the argument's own, or, in the function table, the caller's for the length of its
/// call. A Variant that came by reference is read where the member reads it; numbers, Booleans and
/// texts of a call by name are taken when it begins, and changed ones handed back when it ends.
template <class P>
struct Parameter;

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
requires requires { Scalar<T>::kTag; }
struct Parameter<T> {
  using Abi = T;
  static constexpr TypeReference kType = Scalar<T>::kType;
  static constexpr bool kByReference = false;

  class Argument {
   public:
    explicit Argument(T value) noexcept : value_(value) {}
    Argument(CallFrame& frame, std::size_t i)
        : value_(Scalar<T>::read(frame.plainArgument(i, Scalar<T>::kTag))) {}
    T get() const noexcept { return value_; }

   private:
    T value_;
  };
};

template <class T>
requires requires { Scalar<T>::kTag; }
struct Parameter<T&> {
  using Abi = T*;
  static constexpr TypeReference kType = Scalar<T>::kType;
  static constexpr bool kByReference = true;

  class Argument {
   public:
    explicit Argument(T* variable) : variable_(variable) {
      if (variable == nullptr) throw AutomationError::passedOn(E_POINTER, {}, {});
    }
    Argument(CallFrame& frame, std::size_t i)
        : argument_(frame.argument(i)),
          original_(Scalar<T>::read(frame.plainArgument(i, Scalar<T>::kTag))),
          value_(original_),
          variable_(&value_) {}
    Argument(const Argument&) = delete;
    Argument& operator=(const Argument&) = delete;
    T& get() const noexcept { return *variable_; }
    /// Only a changed value is written, so that an unchanged variable keeps its own type.
    void writeBack() const {
      if (value_ != original_ && argument_ != nullptr && (argument_->vt & VT_BYREF) != 0)
        storeThrough(*argument_, Variant(value_));
    }

   private:
    VARIANT* argument_ = nullptr;
    T original_{};
    T value_{};
    T* variable_;
  };
};

template <std::derived_from<VariantRef> R>
struct Parameter<R&> {
  using Abi = VARIANT*;
  static constexpr TypeReference kType{InterfaceType::Variant};
  static constexpr bool kByReference = true;

  class Argument {
   public:
    explicit Argument(VARIANT* variable) : reference_(variable) {}
    Argument(CallFrame& frame, std::size_t i)
        : reference_(VariantRef::kArgument, frame.argument(i)) {}
    R& get() noexcept { return reference_; }

   private:
    R reference_;
  };
};

template <>
struct Parameter<const VARIANT&> {
  using Abi = VARIANT;
  static constexpr TypeReference kType{InterfaceType::Variant};
  static constexpr bool kByReference = false;

  class Argument {
   public:
    explicit Argument(const VARIANT& value);
    Argument(CallFrame& frame, std::size_t i);
    Argument(const Argument&) = delete;
    Argument& operator=(const Argument&) = delete;
    const VARIANT& get() const noexcept { return *value_; }

   private:
    Variant own_;
    const VARIANT* value_;
  };
};

template <>
struct Parameter<std::u16string_view> {
  using Abi = BSTR;
  static constexpr TypeReference kType{InterfaceType::String};
  static constexpr bool kByReference = false;

  class Argument {
   public:
    explicit Argument(BSTR text) noexcept : text_(viewOf(text)) {}
    Argument(CallFrame& frame, std::size_t i) : text_(frame.textArgument(i, own_)) {}
    Argument(const Argument&) = delete;
    Argument& operator=(const Argument&) = delete;
    std::u16string_view get() const noexcept { return text_; }

   private:
    Text own_;
    std::u16string_view text_;
  };
};

template <>
struct Parameter<TextRef> {
  using Abi = BSTR*;
  static constexpr TypeReference kType{InterfaceType::String};
  static constexpr bool kByReference = true;

  class Argument {
   public:
    explicit Argument(const BSTR* text) noexcept : text_(reinterpret_cast<const Text*>(text)) {}
    Argument(CallFrame& frame, std::size_t i) : text_(&frame.textArgument(i, own_)) {}
    Argument(const Argument&) = delete;
    Argument& operator=(const Argument&) = delete;
    TextRef get() const noexcept { return TextRef(text_); }

   private:
    Text own_;
    const Text* text_;
  };
};

template <>
struct Parameter<const Object&> {
  using Abi = IDispatch**;
  static constexpr TypeReference kType{InterfaceType::Dispatch};
  static constexpr bool kByReference = true;

  class Argument {
   public:
    explicit Argument(IDispatch* const* object) : object_(object == nullptr ? nullptr : *object) {}
    Argument(CallFrame& frame, std::size_t i);
    const Object& get() const noexcept { return object_; }

   private:
    Object object_;
  };
};

/// The trailing arguments of a call, in call order. Elements may be references: each is read when
/// the member comes to it, and what was read is kept only as a copy.
using ArgumentList = std::span<const VARIANT>;

template <>
struct Parameter<ArgumentList> {
  using Abi = SAFEARRAY**;
  static constexpr TypeReference kType{InterfaceType::VariantList};
  static constexpr bool kByReference = true;

  class Argument {
   public:
    explicit Argument(SAFEARRAY* const* array);
    Argument(CallFrame& frame, std::size_t) noexcept : list_(frame.list()) {}
    Argument(const Argument&) = delete;
    Argument& operator=(const Argument&) = delete;
    ~Argument();
    ArgumentList get() const noexcept { return list_; }

   private:
    SAFEARRAY* array_ = nullptr;  // of a call through the table: locked while it runs
    ArgumentList list_;
  };
};

/// Results: their place in the function table and how they become that or a Variant.
template <class R>
struct Result;

template <class T>
requires requires { Scalar<T>::kTag; }
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
