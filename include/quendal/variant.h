// The dynamically typed value that crosses every call.
#pragma once

#include <quendal/error.h>
#include <quendal/text.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace quendal {

class Object;

/// A 16-bit Boolean. Callers may pass any bit pattern; only True (-1) is true to the library.
enum class Boolean : VARIANT_BOOL { False = 0, True = -1 };
constexpr Boolean booleanOf(bool value) noexcept { return value ? Boolean::True : Boolean::False; }
constexpr bool isTrue(Boolean value) noexcept { return value == Boolean::True; }

/// True for a reference to an object. `value` is not a reference to a value.
constexpr bool isObject(const VARIANT& value) noexcept {
  return value.vt == VT_DISPATCH || value.vt == VT_UNKNOWN;
}

/// VARIANT type tags that are combinations.
inline constexpr VARTYPE kVariantArray = VT_ARRAY | VT_VARIANT;
inline constexpr VARTYPE kVariantReference = VT_BYREF | VT_VARIANT;

/// The locale in which calls are made and values converted: the user's.
inline constexpr LCID kUserLocale = 0x400;

/// A VARIANT that owns what it holds; same size and layout.
class QUENDAL_EXPORT Variant : public VARIANT {
 public:
  Variant() noexcept { VariantInit(this); }
  Variant(std::u16string_view text);
  Variant(const char16_t* text) : Variant(std::u16string_view(text)) {}
  Variant(const std::u16string& text) : Variant(std::u16string_view(text)) {}
  Variant(Text&& text) noexcept;
  Variant(std::int16_t value) noexcept;
  Variant(std::int32_t value) noexcept;
  Variant(double value) noexcept;
  Variant(Boolean value) noexcept;
  Variant(const Object& object) noexcept;
  Variant(bool) = delete;  // say which Boolean

  Variant(const Variant& other);
  Variant(Variant&& other) noexcept;
  Variant& operator=(Variant other) noexcept;
  ~Variant() { VariantClear(this); }

  /// A deep copy of a caller's value, references followed.
  [[nodiscard]] static Variant copyOf(const VARIANT& value);
  /// Takes ownership of what `value` holds.
  [[nodiscard]] static Variant attach(const VARIANT& value) noexcept;
  [[nodiscard]] static Variant null() noexcept;
  /// A Date: days since 30 December 1899, the time as the fraction.
  [[nodiscard]] static Variant date(DATE value) noexcept;
  /// The marker of an omitted optional argument.
  [[nodiscard]] static Variant missing() noexcept;
  /// Takes ownership of an array whose elements are of `elementType`.
  [[nodiscard]] static Variant array(SAFEARRAY* array, VARTYPE elementType = VT_VARIANT) noexcept;

  /// Hands ownership to the caller and becomes Empty.
  [[nodiscard]] VARIANT release() noexcept;
};
static_assert(sizeof(Variant) == sizeof(VARIANT));

/// The value behind any levels of reference. Borrowed: it must not be cleared, and is good while
/// what it was read from is.
[[nodiscard]] QUENDAL_EXPORT VARIANT follow(const VARIANT& value) noexcept;

/// True for the marker of an omitted optional argument.
[[nodiscard]] QUENDAL_EXPORT bool isMissing(const VARIANT& value) noexcept;

/// The ordinary text form: numbers and dates in the locale's form, Boolean as True or False, Empty
/// as no text, an object by its default value. Raises 94 for Null, 13 for arrays and error values.
[[nodiscard]] QUENDAL_EXPORT std::u16string textOf(const VARIANT& value);

/// As textOf, but Null contributes nothing, as when a script joins texts with "&".
[[nodiscard]] QUENDAL_EXPORT std::u16string joinedTextOf(const VARIANT& value);

/// Numeric forms, rounded to even. Raise 13, 6 (out of range) or 94 (Null).
[[nodiscard]] QUENDAL_EXPORT std::int32_t int32Of(const VARIANT& value);
[[nodiscard]] QUENDAL_EXPORT std::int16_t int16Of(const VARIANT& value);
[[nodiscard]] QUENDAL_EXPORT double doubleOf(const VARIANT& value);

/// The value converted by the automation rules to a type without references. Raises as above.
[[nodiscard]] QUENDAL_EXPORT Variant converted(const VARIANT& value, VARTYPE type);

/// The host's name for the value's type: "Integer", "String", "Nothing", "Variant()", or an
/// object's class name.
[[nodiscard]] QUENDAL_EXPORT std::u16string typeNameOf(const VARIANT& value);

}  // namespace quendal
