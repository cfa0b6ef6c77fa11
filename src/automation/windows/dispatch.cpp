#include "automation/dispatch.h"

#include <exception>

#include "automation/dictionary_abi.h"
#include "automation/windows/named_type_info.h"
#include "platform/module.h"
#include "platform/windows/wide.h"
// after windows.h
#include <dispex.h>

namespace quendal::automation {
namespace {

constexpr std::size_t kMaxMemberName = 256;

struct FreeText {
  void operator()(OLECHAR* text) const noexcept { SysFreeString(text); }
};

HRESULT extendedMemberId(IDispatchEx* object, std::u16string_view name, DISPID* id) noexcept {
  const std::unique_ptr<OLECHAR, FreeText> text(
      SysAllocStringLen(oleText(name.data()), static_cast<UINT>(name.size())));
  if (text == nullptr) return E_OUTOFMEMORY;
  return object->GetDispID(text.get(), fdexNameCaseInsensitive, id);
}

}  // namespace

HRESULT memberId(IDispatch* object, std::u16string_view name, DISPID* id) noexcept {
  if (object == nullptr || id == nullptr) return E_POINTER;
  *id = DISPID_UNKNOWN;
  platform::WideText<kMaxMemberName> text(name);
  if (!text.fits()) return DISP_E_UNKNOWNNAME;  // no language has so long a name
  wchar_t* names[] = {text.data()};
  HRESULT result = object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, id);
  if (SUCCEEDED(result)) return result;
  void* found = nullptr;
  if (SUCCEEDED(object->QueryInterface(__uuidof(IDispatchEx), &found)) && found != nullptr) {
    const Reference<IDispatchEx> extended(static_cast<IDispatchEx*>(found));
    result = extendedMemberId(extended.get(), name, id);
  }
  if (FAILED(result)) *id = DISPID_UNKNOWN;
  return result;
}

IDispatch* newDictionary() noexcept {
  void* dictionary = nullptr;
  const HRESULT result =
      CoCreateInstance(kClsidDictionary, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, &dictionary);
  return SUCCEEDED(result) ? static_cast<IDispatch*>(dictionary) : nullptr;
}

HRESULT typeInformation(REFIID interfaceId, REFCLSID classId, std::u16string_view className,
                        ITypeInfo** info) noexcept {
  if (info == nullptr) return E_POINTER;
  *info = nullptr;
  try {
    const std::u16string module = platform::ownModulePath();
    ITypeLib* opened = nullptr;
    HRESULT result = LoadTypeLibEx(oleText(module.c_str()), REGKIND_NONE, &opened);
    if (FAILED(result)) return result;
    const Reference<ITypeLib> library(opened);
    ITypeInfo* found = nullptr;
    result = library->GetTypeInfoOfGuid(interfaceId, &found);
    if (FAILED(result)) result = library->GetTypeInfoOfGuid(classId, &found);
    if (FAILED(result)) return result;
    *info = nameTypeInfo(Reference<ITypeInfo>(found), className);
    return S_OK;
  } catch (const std::exception&) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace quendal::automation
