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

/// Reads and replaces a caller's variable in place, through however many levels of reference the
/// host passed it. A literal argument can be replaced too, but nobody sees that.
class VariantRef {
 public:
  /// `argument` as it stands in a call by name: a reference is written through, anything else is
  /// a literal that belongs to the caller and stays untouched.
  static constexpr struct Argument {
  } kArgument{};
  VariantRef(Argument, VARIANT* argument) noexcept;
  /// A variable that may be replaced, or null for none.
  explicit VariantRef(VARIANT* variable) noexcept;
  VariantRef(const VariantRef&) = delete;
  VariantRef& operator=(const VariantRef&) = delete;
  ~VariantRef();

  /// The value, references followed. Borrowed; good until the variable changes.
  [[nodiscard]] VARIANT value() const noexcept { return follow(*variable_); }

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
  void replaceByEmptyText();

 private:
  [[nodiscard]] bool isLocal() const noexcept { return variable_ == &local_; }

  VARIANT* variable_;       // never null
  VARIANT local_;           // stands in for a literal or for no variable
  bool ownsLocal_ = false;  // whether `local_` is ours to clear
};

/// As VariantRef, for an optional parameter whose declared default is the empty text.
class DefaultedRef : public VariantRef {
 public:
  DefaultedRef(Argument, VARIANT* argument) : VariantRef(kArgument, argument) { applyDefault(); }
  explicit DefaultedRef(VARIANT* variable) : VariantRef(variable) { applyDefault(); }

 private:
  void applyDefault() {
    if (isMissing(value())) replaceByEmptyText();
  }
};

/// Text that a member takes by reference but never changes.
class TextRef {
 public:
  /// Null when the caller passed none.
  explicit TextRef(const Text* text) noexcept : text_(text) {}

  [[nodiscard]] bool isGiven() const noexcept { return text_ != nullptr; }
  /// Borrowed; good until foreign code runs, which may change the caller's variable.
  [[nodiscard]] std::u16string_view view() const noexcept {
    return text_ == nullptr ? std::u16string_view() : text_->view();
  }

 private:
  const Text* text_;
};

}  // namespace quendal
