#include "automation/host_type.h"

#include <new>

#include "automation/windows/named_type_info.h"

namespace quendal::automation {

HRESULT hostType(std::u16string_view name, ITypeInfo** info) noexcept {
  if (info == nullptr) return E_POINTER;
  *info = nullptr;
  try {
    // That of IDispatch itself, from the system's own type library.
    ITypeLib* opened = nullptr;
    HRESULT result = LoadTypeLibEx(L"stdole2.tlb", REGKIND_NONE, &opened);
    if (FAILED(result)) return result;
    const Reference<ITypeLib> library(opened);
    ITypeInfo* dispatch = nullptr;
    result = library->GetTypeInfoOfGuid(IID_IDispatch, &dispatch);
    if (FAILED(result)) return result;
    *info = nameTypeInfo(Reference<ITypeInfo>(dispatch), name);
    return S_OK;
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace quendal::automation
