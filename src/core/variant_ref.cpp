#include "core/variant_ref.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "automation/element_size.h"

namespace quendal {
namespace {

// Puts a value into a variable. The old value goes last: an object that goes may look here.
void replace(VARIANT& variable, Variant value) {
  VARIANT old = variable;
  variable = value.release();
  const HRESULT result = VariantClear(&old);
  if (SUCCEEDED(result)) return;
  value = Variant::attach(variable);
  variable = old;
  check(result);
}

void storeArray(const VARIANT& reference, Variant value) {
  const auto type = static_cast<VARTYPE>(reference.vt & ~VT_BYREF);
  if (value.vt != type) throw AutomationError(error_number::kTypeMismatch);
  SAFEARRAY*& variable = *reference.pparray;
  if (variable != nullptr && isFixed(*variable)) check(DISP_E_ARRAYISLOCKED);
  SAFEARRAY* old = std::exchange(variable, value.release().parray);
  const HRESULT result = SafeArrayDestroy(old);
  if (SUCCEEDED(result)) return;
  value = Variant::array(std::exchange(variable, old));
  check(result);
}

}  // namespace

bool isFixed(const SAFEARRAY& array) noexcept {
  constexpr USHORT kFixed = FADF_AUTO | FADF_STATIC | FADF_FIXEDSIZE;
  return (array.fFeatures & kFixed) != 0;
}

void storeThrough(const VARIANT& reference, Variant value) {
  const VARIANT* target = &reference;
  while (target->vt == kVariantReference) {
    VARIANT* inner = target->pvarVal;
    if (inner == nullptr) return;  // as follow reads it: nothing is there
    if ((inner->vt & VT_BYREF) == 0) return replace(*inner, std::move(value));
    target = inner;
  }
  if (target->byref == nullptr) return;
  if ((target->vt & VT_ARRAY) != 0) return storeArray(*target, std::move(value));

  const auto type = static_cast<VARTYPE>(target->vt & ~VT_BYREF);
  Variant typed = value.vt == type ? std::move(value) : converted(value, type);
  const std::size_t size = automation::elementSize(type);
  if (size == 0 || size > sizeof typed.llVal) throw AutomationError(error_number::kTypeMismatch);
  auto* const place = static_cast<std::byte*>(target->byref);
  auto* const payload = reinterpret_cast<std::byte*>(&typed.llVal);
  std::swap_ranges(place, place + size, payload);  // the old value goes with `typed`
}

void VariantRef::set(Variant value) {
  if (isReference())
    storeThrough(argument_, std::move(value));
  else if (isOwned_)
    replace(argument_, std::move(value));
  else
    own(std::move(value));
}

SAFEARRAY* VariantRef::array() {
  const VARIANT current = value();
  if ((current.vt & VT_ARRAY) == 0) return nullptr;
  if (!isReference() && !isOwned_) own(Variant::copyOf(current));
  return value().parray;
}

void VariantRef::eraseArray() {
  const VARIANT* target = &argument_;
  while (target->vt == kVariantReference && target->pvarVal != nullptr) target = target->pvarVal;
  const bool isTyped = (target->vt & VT_BYREF) != 0;
  set(Variant::array(nullptr,
                     static_cast<VARTYPE>(isTyped ? target->vt & VT_TYPEMASK : VT_VARIANT)));
}

void VariantRef::own(Variant value) noexcept {
  argument_ = value.release();
  isOwned_ = true;
}

}  // namespace quendal
