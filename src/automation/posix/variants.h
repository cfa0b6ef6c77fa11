// What the runtime's own parts share about values.
#pragma once

#include <quendal/automation.h>

#include <new>
#include <utility>

#include "automation/element_size.h"

namespace quendal::automation {

/// A value that goes at the end of the scope.
struct OwnedValue : VARIANT {
  OwnedValue() noexcept : VARIANT{} {}
  explicit OwnedValue(const VARIANT& taken) noexcept : VARIANT(taken) {}
  OwnedValue(OwnedValue&& other) noexcept : VARIANT(other) { other.vt = VT_EMPTY; }
  OwnedValue& operator=(OwnedValue&& other) noexcept {
    std::swap<VARIANT>(*this, other);
    return *this;
  }
  ~OwnedValue() {
    if (vt != VT_EMPTY) VariantClear(this);
  }
};

/// True for the tags that a value may carry.
[[nodiscard]] constexpr bool isValueType(VARTYPE type) noexcept {
  const auto element = static_cast<VARTYPE>(type & VT_TYPEMASK);
  if ((type & VT_ARRAY) != 0) return elementSize(element) != 0;
  if ((type & VT_BYREF) != 0) return elementSize(element) != 0;
  return element == VT_EMPTY || element == VT_NULL ||
         (element != VT_VARIANT && elementSize(element) != 0);
}

/// The value that `source` is or refers to, through references to variants of any depth. Nothing
/// is copied: `value` shares what `source` owns and must not be cleared. E_INVALIDARG for a null
/// reference or a chain without end, DISP_E_BADVARTYPE for an unknown tag.
[[nodiscard]] HRESULT borrowValue(const VARIANT& source, VARIANT& value) noexcept;

/// Runs what gives a result; memory that is short becomes that result.
template <class Body>
[[nodiscard]] HRESULT guarded(Body body) noexcept {
  try {
    return body();
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
}

/// Copies a borrowed value into `target`, which holds nothing.
[[nodiscard]] HRESULT copyInto(VARIANT& target, const VARIANT& value) noexcept;

/// Replaces what `target` holds by `value`, taking it over. On failure `target` is unchanged and
/// `value` is freed.
[[nodiscard]] HRESULT replaceValue(VARIANT& target, VARIANT& value) noexcept;

}  // namespace quendal::automation
