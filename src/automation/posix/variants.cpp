#include "automation/posix/variants.h"

#include <cstring>

#include "automation/posix/strings.h"

namespace quendal::automation {
namespace {

// More than any caller nests; a longer chain of references is taken for one that bites its tail.
constexpr int kDeepestReference = 64;

bool isReference(const VARIANT& value) noexcept { return (value.vt & VT_BYREF) != 0; }
bool isArray(const VARIANT& value) noexcept { return (value.vt & VT_ARRAY) != 0; }

// Reads what a typed reference points to.
void readThrough(const VARIANT& reference, VARIANT& value) noexcept {
  const auto type = static_cast<VARTYPE>(reference.vt & ~VT_BYREF);
  value = VARIANT{};
  if (type == VT_DECIMAL) {
    value.decVal = *reference.pdecVal;  // overlays the tag
  } else {
    std::memcpy(&value.llVal, reference.byref,
                (type & VT_ARRAY) != 0 ? sizeof(SAFEARRAY*) : elementSize(type));
  }
  value.vt = type;
}

}  // namespace

HRESULT borrowValue(const VARIANT& source, VARIANT& value) noexcept {
  const VARIANT* current = &source;
  for (int depth = 0; depth < kDeepestReference; ++depth) {
    if (!isValueType(current->vt)) return DISP_E_BADVARTYPE;
    if (!isReference(*current)) {
      value = *current;
      return S_OK;
    }
    if (current->byref == nullptr) return E_INVALIDARG;
    if (current->vt != (VT_BYREF | VT_VARIANT)) {
      readThrough(*current, value);
      return S_OK;
    }
    current = current->pvarVal;
  }
  return E_INVALIDARG;
}

HRESULT copyInto(VARIANT& target, const VARIANT& value) noexcept {
  target = value;
  if (isReference(value)) return S_OK;
  if (isArray(value)) {
    const HRESULT result = SafeArrayCopy(value.parray, &target.parray);
    if (FAILED(result)) target.vt = VT_EMPTY;
    return result;
  }
  switch (value.vt) {
    case VT_BSTR:
      if (value.bstrVal == nullptr) return S_OK;
      target.bstrVal = newText(viewOf(value.bstrVal));
      if (target.bstrVal != nullptr) return S_OK;
      target.vt = VT_EMPTY;
      return E_OUTOFMEMORY;
    case VT_DISPATCH:
    case VT_UNKNOWN:
      if (value.punkVal != nullptr) value.punkVal->AddRef();
      return S_OK;
    default:
      return S_OK;
  }
}

HRESULT replaceValue(VARIANT& target, VARIANT& value) noexcept {
  // The new value is in place before the old one goes: an object that goes may look here.
  VARIANT old = target;
  target = value;
  const HRESULT result = VariantClear(&old);
  if (FAILED(result)) {
    target = old;
    VariantClear(&value);
  }
  return result;
}

}  // namespace quendal::automation

using quendal::automation::borrowValue;
using quendal::automation::copyInto;
using quendal::automation::isArray;
using quendal::automation::isReference;
using quendal::automation::isValueType;
using quendal::automation::replaceValue;

void VariantInit(VARIANTARG* value) noexcept { *value = VARIANT{}; }

HRESULT VariantClear(VARIANTARG* value) noexcept {
  if (value == nullptr) return E_INVALIDARG;
  // Empty first: what an object does as it goes may lead back here.
  const VARTYPE type = value->vt;
  if (type == VT_BSTR) {
    value->vt = VT_EMPTY;
    SysFreeString(value->bstrVal);
    return S_OK;
  }
  if (!isValueType(type)) return DISP_E_BADVARTYPE;
  value->vt = VT_EMPTY;
  if ((type & VT_BYREF) != 0) return S_OK;
  if ((type & VT_ARRAY) != 0) {
    const HRESULT result = value->parray == nullptr ? S_OK : SafeArrayDestroy(value->parray);
    if (FAILED(result)) value->vt = type;
    return result;
  }
  if (type == VT_DISPATCH || type == VT_UNKNOWN) {
    if (value->punkVal != nullptr) value->punkVal->Release();
  }
  return S_OK;
}

HRESULT VariantCopy(VARIANTARG* target, const VARIANTARG* source) noexcept {
  if (target == nullptr || source == nullptr) return E_INVALIDARG;
  if (target == source) return S_OK;
  if (!isValueType(source->vt)) return DISP_E_BADVARTYPE;
  VARIANT copy;
  const HRESULT result = copyInto(copy, *source);
  return FAILED(result) ? result : replaceValue(*target, copy);
}

HRESULT VariantCopyInd(VARIANT* target, const VARIANTARG* source) noexcept {
  if (target == nullptr || source == nullptr) return E_INVALIDARG;
  if (target == source && !isReference(*source)) return S_OK;
  VARIANT value;
  HRESULT result = borrowValue(*source, value);
  if (FAILED(result)) return result;
  VARIANT copy;
  result = copyInto(copy, value);
  return FAILED(result) ? result : replaceValue(*target, copy);
}
