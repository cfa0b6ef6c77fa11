// The dictionary's members by name and number, as a script calls them.
#include <cstdint>
#include <string_view>

#include "automation/dispatch.h"
#include "automation/posix/dictionary.h"
#include "automation/reference.h"
#include "base/text.h"

namespace quendal::automation {
namespace {

constexpr DISPID kItem = DISPID_VALUE;
constexpr DISPID kCount = 2;
constexpr DISPID kExists = 3;
constexpr DISPID kItems = 4;
constexpr DISPID kKey = 5;
constexpr DISPID kKeys = 6;
constexpr DISPID kRemove = 7;
constexpr DISPID kRemoveAll = 8;
constexpr DISPID kCompareMode = 9;

constexpr WORD kGet = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
constexpr WORD kPut = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;

// How many arguments a member takes when it is called or read, and when it is set.
constexpr int kNot = -1;
struct Member {
  std::u16string_view name;
  DISPID id;
  int called;
  int set;
};
constexpr Member kMembers[] = {{u"Item", kItem, 1, 2},
                               {u"Add", kDictionaryAdd, 2, kNot},
                               {u"Count", kCount, 0, kNot},
                               {u"Exists", kExists, 1, kNot},
                               {u"Items", kItems, 0, kNot},
                               {u"Key", kKey, kNot, 2},
                               {u"Keys", kKeys, 0, kNot},
                               {u"Remove", kRemove, 1, kNot},
                               {u"RemoveAll", kRemoveAll, 0, kNot},
                               {u"CompareMode", kCompareMode, 0, 1},
                               {u"_NewEnum", DISPID_NEWENUM, 0, kNot}};

HRESULT checkCall(DISPID id, WORD flags, const DISPPARAMS& params) noexcept {
  const bool isPut = (flags & kPut) != 0;
  if (params.cNamedArgs > 1 ||
      (params.cNamedArgs == 1 && (!isPut || params.rgdispidNamedArgs == nullptr ||
                                  params.rgdispidNamedArgs[0] != DISPID_PROPERTYPUT))) {
    return DISP_E_NONAMEDARGS;
  }
  for (const Member& member : kMembers) {
    if (member.id != id) continue;
    const int arguments = isPut ? member.set : member.called;
    if (arguments == kNot || (flags & (kPut | kGet)) == 0) break;
    return params.cArgs == static_cast<UINT>(arguments) ? S_OK : DISP_E_BADPARAMCOUNT;
  }
  return DISP_E_MEMBERNOTFOUND;
}

// Moves the thread's error information into a caller's record.
void describe(HRESULT code, EXCEPINFO& exception) noexcept {
  exception = EXCEPINFO{};
  exception.scode = code;
  IErrorInfo* info = nullptr;
  if (GetErrorInfo(0, &info) != S_OK) return;
  const Reference<IErrorInfo> held(info);
  info->GetSource(&exception.bstrSource);
  info->GetDescription(&exception.bstrDescription);
}

bool isNumberedError(HRESULT code) noexcept {
  return (static_cast<std::uint32_t>(code) & 0xFFFF0000U) == 0x800A0000U;
}

}  // namespace

HRESULT Dictionary::GetTypeInfoCount(UINT* count) {
  if (count == nullptr) return E_POINTER;
  *count = 1;
  return S_OK;
}

HRESULT Dictionary::GetTypeInfo(UINT index, LCID, ITypeInfo** info) {
  if (info == nullptr) return E_POINTER;
  *info = nullptr;
  if (index != 0) return DISP_E_BADINDEX;
  return typeInformation(kIidDictionary, kClsidDictionary, u"Dictionary", info);
}

HRESULT Dictionary::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  if (names == nullptr || ids == nullptr || count == 0) return E_INVALIDARG;
  for (UINT i = 0; i < count; ++i) ids[i] = DISPID_UNKNOWN;  // parameters have no names
  if (names[0] == nullptr) return E_INVALIDARG;
  for (const Member& member : kMembers)
    if (equalNoCase(names[0], member.name)) ids[0] = member.id;
  return ids[0] == DISPID_UNKNOWN || count > 1 ? DISP_E_UNKNOWNNAME : S_OK;
}

// Arguments come in reverse: the last one, which for a put is the value, is the first.
HRESULT Dictionary::call(DISPID id, WORD flags, const DISPPARAMS& params, VARIANT* result) {
  VARIANT* last = params.rgvarg;
  const bool isPut = (flags & kPut) != 0;
  switch (id) {
    case kItem:
      return isPut ? put_Item(&last[1], &last[0]) : get_Item(&last[0], result);
    case kDictionaryAdd:
      return Add(&last[1], &last[0]);
    case kCount:
      result->vt = VT_I4;
      return get_Count(&result->lVal);
    case kExists:
      result->vt = VT_BOOL;
      return Exists(&last[0], &result->boolVal);
    case kItems:
      return Items(result);
    case kKey:
      return put_Key(&last[1], &last[0]);
    case kKeys:
      return Keys(result);
    case kRemove:
      return Remove(&last[0]);
    case kRemoveAll:
      return RemoveAll();
    case kCompareMode: {
      if (!isPut) {
        result->vt = VT_I4;
        return get_CompareMode(&result->lVal);
      }
      VARIANT mode{};
      const HRESULT converted = VariantChangeTypeEx(&mode, &last[0], 0, 0, VT_I4);
      return FAILED(converted) ? converted : put_CompareMode(mode.lVal);
    }
    default:
      result->vt = VT_UNKNOWN;
      return _NewEnum(&result->punkVal);
  }
}

HRESULT Dictionary::Invoke(DISPID id, REFIID reserved, LCID, WORD flags, DISPPARAMS* params,
                           VARIANT* result, EXCEPINFO* exception, UINT* argumentError) {
  if (!(reserved == IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
  if (params == nullptr || (params->cArgs > 0 && params->rgvarg == nullptr)) return E_INVALIDARG;
  HRESULT code = checkCall(id, flags, *params);
  if (FAILED(code)) return code;

  AddRef();  // an item that goes may take the caller's reference with it
  const Reference<IDictionary> alive(this);
  VARIANT answer{};
  code = call(id, flags, *params, &answer);
  if (SUCCEEDED(code)) {
    if (result != nullptr) {
      *result = answer;
    } else {
      VariantClear(&answer);
    }
    return S_OK;
  }
  if (code == DISP_E_TYPEMISMATCH && argumentError != nullptr && params->cArgs > 0) {
    *argumentError = params->cArgs - 1;
  }
  if (!isNumberedError(code)) return code;
  if (exception != nullptr) describe(code, *exception);
  return DISP_E_EXCEPTION;
}

}  // namespace quendal::automation
