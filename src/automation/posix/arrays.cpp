#include "automation/posix/arrays.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

#include "automation/posix/variants.h"

namespace quendal::automation {
namespace {

struct Freed {
  void operator()(void* block) const noexcept { std::free(block); }
};
using Block = std::unique_ptr<std::byte, Freed>;

static_assert(sizeof(ArrayRecord) % alignof(SAFEARRAY) == 0);

ArrayRecord& recordOf(SAFEARRAY& array) noexcept {
  return *reinterpret_cast<ArrayRecord*>(reinterpret_cast<std::byte*>(&array) -
                                         sizeof(ArrayRecord));
}

SAFEARRAY& arrayOf(Teardown& note) noexcept {
  return *reinterpret_cast<SAFEARRAY*>(reinterpret_cast<std::byte*>(&note) + sizeof(ArrayRecord));
}

bool isOwn(const SAFEARRAY& array) noexcept { return (array.fFeatures & FADF_HAVEVARTYPE) != 0; }

// True when the upper bound is a LONG too.
bool isValid(const SAFEARRAYBOUND& bound) noexcept {
  return std::int64_t{bound.lLbound} + bound.cElements - 1 <= std::numeric_limits<LONG>::max();
}

// Multiplies a size by a dimension's count; false when the product is more than an array may have.
bool scale(std::size_t& bytes, ULONG count) noexcept {
  if (count != 0 && bytes > kLargestArray / count) return false;
  bytes *= count;
  return true;
}

USHORT featuresOf(VARTYPE type) noexcept {
  switch (type) {
    case VT_BSTR:
      return FADF_HAVEVARTYPE | FADF_BSTR;
    case VT_UNKNOWN:
      return FADF_HAVEVARTYPE | FADF_UNKNOWN;
    case VT_DISPATCH:
      return FADF_HAVEVARTYPE | FADF_DISPATCH;
    case VT_VARIANT:
      return FADF_HAVEVARTYPE | FADF_VARIANT;
    default:
      return FADF_HAVEVARTYPE;
  }
}

std::size_t descriptorSize(UINT dimensions) noexcept {
  return sizeof(SAFEARRAY) + (dimensions - 1) * sizeof(SAFEARRAYBOUND);
}

void destroyArray(Teardown& note) noexcept {
  SAFEARRAY& array = arrayOf(note);
  ++array.cLocks;  // an object that goes may reach the array once more, but not change its size
  destroyElements(recordOf(array).type, array.pvData, elementCountOf(array));
  std::free(array.pvData);
  std::free(&recordOf(array));
}

// Makes room for so many bytes of elements; those there are come along as far as they go. Growth by
// little leaves room for more of it, so that adding elements one by one costs little per element;
// memory goes back once most of it is unused. False without memory.
bool makeRoom(SAFEARRAY& array, std::size_t bytes) noexcept {
  const std::size_t capacity = recordOf(array).capacity;
  if (bytes <= capacity && bytes >= capacity / 4) return true;
  std::size_t size = std::max<std::size_t>(bytes, 1);
  if (bytes > capacity) size = std::max(bytes, std::min(capacity + capacity / 2, kLargestArray));
  void* moved = std::realloc(array.pvData, size);
  if (moved == nullptr) return false;
  array.pvData = moved;
  recordOf(array).capacity = static_cast<std::uint32_t>(size);
  return true;
}

const SAFEARRAYBOUND* dimensionOf(const SAFEARRAY& array, UINT dimension) noexcept {
  if (dimension == 0 || dimension > array.cDims) return nullptr;
  return &array.rgsabound[array.cDims - dimension];
}

}  // namespace

VARTYPE elementTypeOf(const SAFEARRAY& array) noexcept {
  if (isOwn(array)) return recordOf(const_cast<SAFEARRAY&>(array)).type;
  if ((array.fFeatures & FADF_BSTR) != 0) return VT_BSTR;
  if ((array.fFeatures & FADF_UNKNOWN) != 0) return VT_UNKNOWN;
  if ((array.fFeatures & FADF_DISPATCH) != 0) return VT_DISPATCH;
  if ((array.fFeatures & FADF_VARIANT) != 0) return VT_VARIANT;
  return VT_EMPTY;
}

std::size_t elementCountOf(const SAFEARRAY& array) noexcept {
  std::size_t count = array.cDims == 0 ? 0 : 1;
  for (UINT i = 0; i < array.cDims; ++i) count *= array.rgsabound[i].cElements;
  return count;
}

SAFEARRAY* newArray(VARTYPE type, UINT dimensions, const SAFEARRAYBOUND* bounds) noexcept {
  const USHORT size = elementSize(type);
  if (size == 0 || bounds == nullptr || dimensions == 0 || dimensions > 0xFFFF) return nullptr;
  // A dimension without elements counts as one here, so that re-dimensioning it stays in bounds.
  std::size_t bytes = size;
  bool hasElements = true;
  for (UINT i = 0; i < dimensions; ++i) {
    const ULONG count = bounds[i].cElements;
    if (!isValid(bounds[i]) || !scale(bytes, std::max<ULONG>(count, 1))) return nullptr;
    if (count == 0) hasElements = false;
  }
  if (!hasElements) bytes = 0;

  const std::size_t capacity = std::max<std::size_t>(bytes, 1);
  Block elements(static_cast<std::byte*>(std::calloc(capacity, 1)));
  Block block(
      static_cast<std::byte*>(std::malloc(sizeof(ArrayRecord) + descriptorSize(dimensions))));
  if (elements == nullptr || block == nullptr) return nullptr;
  auto* record = new (block.get())
      ArrayRecord{{nullptr, &destroyArray}, static_cast<std::uint32_t>(capacity), type};
  auto* array = new (block.get() + sizeof(ArrayRecord)) SAFEARRAY{};
  array->cDims = static_cast<USHORT>(dimensions);
  array->fFeatures = featuresOf(record->type);
  array->cbElements = size;
  std::memcpy(array->rgsabound, bounds, dimensions * sizeof(SAFEARRAYBOUND));
  array->pvData = elements.release();
  static_cast<void>(block.release());
  return array;
}

void destroyElements(VARTYPE type, void* elements, std::size_t count) noexcept {
  switch (type) {
    case VT_BSTR:
      for (auto* text = static_cast<BSTR*>(elements); count-- > 0; ++text) {
        SysFreeString(std::exchange(*text, nullptr));
      }
      break;
    case VT_UNKNOWN:
    case VT_DISPATCH:
      for (auto* object = static_cast<IUnknown**>(elements); count-- > 0; ++object) {
        if (IUnknown* gone = std::exchange(*object, nullptr)) gone->Release();
      }
      break;
    case VT_VARIANT:
      for (auto* value = static_cast<VARIANT*>(elements); count-- > 0; ++value) {
        VariantClear(value);
      }
      break;
    default:
      break;
  }
}

}  // namespace quendal::automation

using namespace quendal::automation;

SAFEARRAY* SafeArrayCreate(VARTYPE type, UINT dimensions, SAFEARRAYBOUND* bounds) noexcept {
  if (bounds == nullptr || dimensions == 0 || dimensions > 0xFFFF) return nullptr;
  if (dimensions == 1) return newArray(type, 1, bounds);
  const std::unique_ptr<SAFEARRAYBOUND[]> reversed(new (std::nothrow) SAFEARRAYBOUND[dimensions]);
  if (reversed == nullptr) return nullptr;
  std::reverse_copy(bounds, bounds + dimensions, reversed.get());
  return newArray(type, dimensions, reversed.get());
}

SAFEARRAY* SafeArrayCreateVector(VARTYPE type, LONG lowerBound, ULONG count) noexcept {
  const SAFEARRAYBOUND bound{count, lowerBound};
  return newArray(type, 1, &bound);
}

HRESULT SafeArrayDestroy(SAFEARRAY* array) noexcept {
  if (array == nullptr) return S_OK;
  if (array->cLocks > 0) return DISP_E_ARRAYISLOCKED;
  if (!isOwn(*array)) {
    // The memory is its maker's; only what the elements hold goes.
    destroyElements(elementTypeOf(*array), array->pvData, elementCountOf(*array));
    return S_OK;
  }
  tearDown(recordOf(*array).teardown);
  return S_OK;
}

HRESULT SafeArrayRedim(SAFEARRAY* array, SAFEARRAYBOUND* bound) noexcept {
  if (array == nullptr || bound == nullptr || array->cDims == 0) return E_INVALIDARG;
  constexpr USHORT kFixed = FADF_AUTO | FADF_STATIC | FADF_FIXEDSIZE;
  if (array->cLocks > 0 || !isOwn(*array) || (array->fFeatures & kFixed) != 0) {
    return DISP_E_ARRAYISLOCKED;
  }
  if (!isValid(*bound)) return E_INVALIDARG;

  std::size_t stride = array->cbElements;  // bytes for each step of the last dimension
  for (UINT i = 1; i < array->cDims; ++i) stride *= array->rgsabound[i].cElements;
  const std::size_t oldBytes = stride * array->rgsabound[0].cElements;
  std::size_t bytes = stride;
  if (!scale(bytes, bound->cElements)) return E_OUTOFMEMORY;

  if (bytes > oldBytes) {
    if (!makeRoom(*array, bytes)) return E_OUTOFMEMORY;
    std::memset(static_cast<std::byte*>(array->pvData) + oldBytes, 0, bytes - oldBytes);
    array->rgsabound[0] = *bound;
    return S_OK;
  }
  array->rgsabound[0] = *bound;
  ++array->cLocks;  // an object that goes may reach the array, but not change its size meanwhile
  destroyElements(recordOf(*array).type, static_cast<std::byte*>(array->pvData) + bytes,
                  (oldBytes - bytes) / array->cbElements);
  --array->cLocks;
  if (array->cLocks == 0) static_cast<void>(makeRoom(*array, bytes));
  return S_OK;
}

HRESULT SafeArrayAccessData(SAFEARRAY* array, void** data) noexcept {
  if (array == nullptr || data == nullptr) return E_INVALIDARG;
  if (array->cLocks == std::numeric_limits<ULONG>::max()) return E_UNEXPECTED;
  ++array->cLocks;
  *data = array->pvData;
  return S_OK;
}

HRESULT SafeArrayUnaccessData(SAFEARRAY* array) noexcept {
  if (array == nullptr) return E_INVALIDARG;
  if (array->cLocks == 0) return E_UNEXPECTED;
  --array->cLocks;
  return S_OK;
}

HRESULT SafeArrayGetLBound(SAFEARRAY* array, UINT dimension, LONG* bound) noexcept {
  if (array == nullptr || bound == nullptr) return E_INVALIDARG;
  const SAFEARRAYBOUND* found = dimensionOf(*array, dimension);
  if (found == nullptr) return DISP_E_BADINDEX;
  *bound = found->lLbound;
  return S_OK;
}

HRESULT SafeArrayGetUBound(SAFEARRAY* array, UINT dimension, LONG* bound) noexcept {
  if (array == nullptr || bound == nullptr) return E_INVALIDARG;
  const SAFEARRAYBOUND* found = dimensionOf(*array, dimension);
  if (found == nullptr) return DISP_E_BADINDEX;
  *bound = static_cast<LONG>(std::int64_t{found->lLbound} + found->cElements - 1);
  return S_OK;
}

HRESULT SafeArrayGetVartype(SAFEARRAY* array, VARTYPE* type) noexcept {
  if (array == nullptr || type == nullptr) return E_INVALIDARG;
  *type = elementTypeOf(*array);
  return *type == VT_EMPTY ? E_INVALIDARG : S_OK;
}

UINT SafeArrayGetDim(SAFEARRAY* array) noexcept { return array == nullptr ? 0 : array->cDims; }
