// Deep copies of arrays. Arrays inside arrays are copied from a list of what is still to do, not
// by calls within calls: they nest as deep as a page likes.
#include <cstring>
#include <vector>

#include "automation/posix/arrays.h"
#include "automation/posix/variants.h"

namespace quendal::automation {
namespace {

// An array and its copy, whose elements are still zero.
struct ToCopy {
  const SAFEARRAY* from;
  SAFEARRAY* to;
};
using CopyList = std::vector<ToCopy>;

SAFEARRAY* newArrayLike(const SAFEARRAY& array) noexcept {
  return newArray(elementTypeOf(array), array.cDims, array.rgsabound);
}

// Texts or objects: what a value of the type holds is all of the element.
HRESULT copyPointers(VARTYPE type, void* const* from, void** to, std::size_t count) noexcept {
  for (; count > 0; --count, ++from, ++to) {
    VARIANT value{};
    VARIANT copy;
    value.vt = type;
    value.byref = *from;
    const HRESULT result = copyInto(copy, value);
    if (FAILED(result)) return result;
    *to = copy.byref;
  }
  return S_OK;
}

HRESULT copyValues(const VARIANT* from, VARIANT* to, std::size_t count, CopyList& list) {
  for (; count > 0; --count, ++from, ++to) {
    if (!isValueType(from->vt)) return DISP_E_BADVARTYPE;
    const bool isArray = (from->vt & VT_ARRAY) != 0 && (from->vt & VT_BYREF) == 0;
    if (!isArray || from->parray == nullptr) {
      const HRESULT result = copyInto(*to, *from);
      if (FAILED(result)) return result;
      continue;
    }
    list.push_back({from->parray, nullptr});
    SAFEARRAY* nested = newArrayLike(*from->parray);
    if (nested == nullptr) return E_OUTOFMEMORY;
    list.back().to = to->parray = nested;
    to->vt = from->vt;
  }
  return S_OK;
}

HRESULT copyElements(const ToCopy& arrays, CopyList& list) {
  const void* from = arrays.from->pvData;
  void* to = arrays.to->pvData;
  const std::size_t count = elementCountOf(*arrays.from);
  const VARTYPE type = elementTypeOf(*arrays.from);
  switch (type) {
    case VT_BSTR:
    case VT_UNKNOWN:
    case VT_DISPATCH:
      return copyPointers(type, static_cast<void* const*>(from), static_cast<void**>(to), count);
    case VT_VARIANT:
      return copyValues(static_cast<const VARIANT*>(from), static_cast<VARIANT*>(to), count, list);
    default:
      if (count > 0) std::memcpy(to, from, count * arrays.from->cbElements);
      return S_OK;
  }
}

HRESULT copyAll(const ToCopy& outermost) {
  CopyList list{outermost};
  HRESULT result = S_OK;
  while (SUCCEEDED(result) && !list.empty()) {
    const ToCopy next = list.back();
    list.pop_back();
    result = copyElements(next, list);
  }
  return result;
}

}  // namespace
}  // namespace quendal::automation

using namespace quendal::automation;

HRESULT SafeArrayCopy(SAFEARRAY* source, SAFEARRAY** target) noexcept {
  if (target == nullptr) return E_INVALIDARG;
  *target = nullptr;
  if (source == nullptr) return S_OK;
  if (source->cDims == 0 || elementTypeOf(*source) == VT_EMPTY) return E_INVALIDARG;
  SAFEARRAY* copy = newArrayLike(*source);
  if (copy == nullptr) return E_OUTOFMEMORY;
  const HRESULT result = guarded([&] { return copyAll({source, copy}); });
  if (FAILED(result)) {
    SafeArrayDestroy(copy);
    return result;
  }
  *target = copy;
  return S_OK;
}
