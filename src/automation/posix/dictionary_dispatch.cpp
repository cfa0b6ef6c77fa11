// The dictionary's members by name and number, as a script calls them.
#include <array>
#include <string_view>

#include "automation/dispatch.h"
#include "automation/posix/dictionary.h"
#include "automation/reference.h"

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
constexpr DISPID kHashVal = 10;

constexpr WORD kGet = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
constexpr WORD kPut = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;

struct Member {
  std::u16string_view name;  // in lower case
  DISPID id;
};
constexpr std::array<Member, 12> kMembers{{{u"item", kItem},
                                           {u"add", kDictionaryAdd},
                                           {u"count", kCount},
                                           {u"exists", kExists},
                                           {u"items", kItems},
                                           {u"key", kKey},
                                           {u"keys", kKeys},
                                           {u"remove", kRemove},
                                           {u"removeall", kRemoveAll},
                                           {u"comparemode", kCompareMode},
                                           {u"hashval", kHashVal},
                                           {u"_newenum", DISPID_NEWENUM}}};

bool isName(std::u16string_view given, std::u16string_view lowerCase) noexcept {
  if (given.size() != lowerCase.size()) return false;
  for (std::size_t i = 0; i < given.size(); ++i) {
    const char16_t c = given[i];
    if ((c >= u'A' && c <= u'Z' ? c + 32 : c) != lowerCase[i]) return false;
  }
  return true;
}

DISPID idOf(std::u16string_view name) noexcept {
  for (const Member& member : kMembers) {
    if (isName(name, member.name)) return member.id;
  }
  return DISPID_UNKNOWN;
}

// How a member may be called, and with how many arguments.
HRESULT checkCall(DISPID id, WORD flags, const DISPPARAMS& params) noexcept {
  const bool isPut = (flags & kPut) != 0;
  if (params.cNamedArgs > 1 ||
      (params.cNamedArgs == 1 && (!isPut || params.rgdispidNamedArgs == nullptr ||
                                  params.rgdispidNamedArgs[0] != DISPID_PROPERTYPUT))) {
    return DISP_E_NONAMEDARGS;
  }
  UINT arguments = 0;
  switch (id) {
    case kItem:
      arguments = isPut ? 2 : 1;
      break;
    case kKey:
      if (!isPut) return DISP_E_MEMBERNOTFOUND;
      arguments = 2;
      break;
    case kCompareMode:
      arguments = isPut ? 1 : 0;
      break;
    case kDictionaryAdd:
      if (isPut) return DISP_E_MEMBERNOTFOUND;
      arguments = 2;
      break;
    case kExists:
    case kRemove:
    case kHashVal:
      if (isPut) return DISP_E_MEMBERNOTFOUND;
      arguments = 1;
      break;
    case kCount:
    case kItems:
    case kKeys:
    case kRemoveAll:
    case DISPID_NEWENUM:
      if (isPut) return DISP_E_MEMBERNOTFOUND;
      break;
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
  if (!isPut && (flags & kGet) == 0) return DISP_E_MEMBERNOTFOUND;
  return params.cArgs == arguments ? S_OK : DISP_E_BADPARAMCOUNT;
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
  ids[0] = idOf(names[0]);
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
    case kHashVal:
      return get_HashVal(&last[0], result);
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
