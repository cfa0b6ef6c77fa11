// A caller's variable that a member receives by reference.
#pragma once

#include <quendal/variant.h>

namespace quendal {

/// True for an array that its owner keeps in one place with the bounds it has, as a page's
/// `Dim a(2)`: it can be neither re-dimensioned nor replaced.
[[nodiscard]] bool isFixed(const SAFEARRAY& array) noexcept;

/// Writes a value to where a by-reference VARIANT points, converted to the type of a typed
/// reference. Raises 13 or 6 when it does not convert, 10 for a locked or fixed array.
void storeThrough(const VARIANT& reference, Variant value);

/// A VARIANT of a type of its own that stands for a variable elsewhere.
[[nodiscard]] inline VARIANT referenceTo(VARTYPE type, void* variable) noexcept {
  VARIANT reference;
  VariantInit(&reference);
  reference.vt = static_cast<VARTYPE>(VT_BYREF | type);
  reference.byref = variable;
  return reference;
}

/// A number or Boolean that a member takes by reference. It reads as what the variable was when the
/// call began; what is assigned reaches the caller's variable at once.
template <class T>
class Ref {
 public:
  /// A plain value: nobody sees what is assigned.
  Ref(T value) noexcept : Ref(value, Variant()) {}
  /// The value of `argument`, which is written through when it is a reference.
  Ref(T value, const VARIANT& argument) noexcept : value_(value), argument_(argument) {}

  operator T() const noexcept { return value_; }
  /// An equal value is not written, so that the variable keeps its own type. Raises as
  /// storeThrough does.
  Ref& operator=(T value) {
    if (value == value_) return *this;
    value_ = value;
    if ((argument_.vt & VT_BYREF) != 0) storeThrough(argument_, Variant(value));
    return *this;
  }

 private:
  T value_;
  VARIANT argument_;  // borrowed
};

/// Reads and replaces a caller's variable in place, through however many levels of reference the
/// host passed it.
class VariantRef {
 public:
  /// An argument of a call by name, or a plain value: a reference is written through; anything else
  /// stays as it is, and nobody sees what is set. Borrowed.
  VariantRef(const VARIANT& argument) noexcept : argument_(argument) {}
  /// A variable that may be replaced; null for an omitted one.
  explicit VariantRef(VARIANT* variable) noexcept
      : argument_(variable == nullptr ? Variant::missing().release()
                                      : referenceTo(VT_VARIANT, variable)) {}
  VariantRef(const VariantRef&) = delete;
  VariantRef& operator=(const VariantRef&) = delete;
  ~VariantRef() {
    if (isOwned_) VariantClear(&argument_);
  }

  /// The value, references followed. Borrowed; good until the variable changes.
  [[nodiscard]] VARIANT value() const noexcept { return follow(argument_); }

  /// Replaces the value. Raises as storeThrough does when the variable has a type of its own.
  void set(Variant value);

  /// The array the variable holds, to be changed in place; null when it holds none or an
  /// unallocated one. A literal's array is copied first, so that the caller's stays as it is.
  SAFEARRAY* array();

  /// Frees the array the variable holds and leaves an unallocated one: of the variable's own
  /// element type, or of Variants where the variable can hold any value. Raises 10 for an array
  /// that is locked or that its owner keeps in place.
  void eraseArray();

 protected:
  /// Puts a value of our own in the place of what was borrowed.
  void own(Variant value) noexcept;

 private:
  [[nodiscard]] bool isReference() const noexcept { return (argument_.vt & VT_BYREF) != 0; }

  VARIANT argument_;      // a reference, or the value itself
  bool isOwned_ = false;  // whether `argument_` is a value of our own
};

/// As VariantRef, for an optional parameter whose declared default is the empty text.
class DefaultedRef : public VariantRef {
 public:
  DefaultedRef(const VARIANT& argument) : VariantRef(argument) { applyDefault(); }
  explicit DefaultedRef(VARIANT* variable) : VariantRef(variable) { applyDefault(); }

 private:
  void applyDefault() {
    if (isMissing(value())) own(Variant(u""));
  }
};

/// Text that a member takes by reference but never changes.
class TextRef {
 public:
  /// Null when the caller passed none.
  explicit TextRef(const Text* text) noexcept : text_(text) {}
  TextRef(const Text& text) noexcept : text_(&text) {}

  [[nodiscard]] bool isGiven() const noexcept { return text_ != nullptr; }
  /// Borrowed; good until foreign code runs, which may change the caller's variable.
  [[nodiscard]] std::u16string_view view() const noexcept {
    return text_ == nullptr ? std::u16string_view() : text_->view();
  }

 private:
  const Text* text_;
};

}  // namespace quendal
