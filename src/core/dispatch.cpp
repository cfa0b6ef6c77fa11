#include "core/dispatch.h"

#include <array>
#include <cstdint>

#include "automation/dispatch.h"
#include "core/apartment.h"
#include "core/names.h"
#include "core/parameters.h"

namespace quendal {
namespace {

HRESULT STDMETHODCALLTYPE tableQueryInterface(DispatchObject* self, REFIID iid,
                                              void** object) noexcept {
  return self->queryInterface(iid, object);
}

ULONG STDMETHODCALLTYPE tableAddRef(DispatchObject* self) noexcept { return self->addRef(); }

ULONG STDMETHODCALLTYPE tableRelease(DispatchObject* self) noexcept { return self->release(); }

HRESULT STDMETHODCALLTYPE tableGetTypeInfoCount(DispatchObject*, UINT* count) noexcept {
  if (count == nullptr) return E_POINTER;
  *count = 1;
  return S_OK;
}

HRESULT STDMETHODCALLTYPE tableGetTypeInfo(DispatchObject* self, UINT index, LCID,
                                           ITypeInfo** info) noexcept {
  if (info == nullptr) return E_POINTER;
  *info = nullptr;
  return index == 0 ? self->typeInfo(self->description().identity().interfaceId, info)
                    : DISP_E_BADINDEX;
}

HRESULT STDMETHODCALLTYPE tableGetIDsOfNames(DispatchObject* self, REFIID reserved, LPOLESTR* names,
                                             UINT count, LCID, DISPID* ids) noexcept {
  if (!(reserved == IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
  if (names == nullptr || ids == nullptr || count == 0) return E_INVALIDARG;
  const ClassDescription& description = self->description();
  ids[0] = description.idOf(plainText(names[0]));
  bool allKnown = ids[0] != DISPID_UNKNOWN;
  for (UINT i = 1; i < count; ++i) {
    ids[i] = description.parameterOf(ids[0], plainText(names[i]));
    allKnown = allKnown && ids[i] != DISPID_UNKNOWN;
  }
  return allKnown ? S_OK : DISP_E_UNKNOWNNAME;
}

HRESULT STDMETHODCALLTYPE tableInvoke(DispatchObject* self, DISPID id, REFIID reserved, LCID,
                                      WORD flags, DISPPARAMS* params, VARIANT* result,
                                      EXCEPINFO* exception, UINT* argumentError) noexcept {
  if (!(reserved == IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
  if (params == nullptr) return E_INVALIDARG;
  return self->invoke(id, flags, *params, result, exception, argumentError);
}

template <class Function>
AnyFunction entry(Function* function) noexcept {
  return reinterpret_cast<AnyFunction>(function);
}

HRESULT publish(HRESULT code, std::u16string_view source, std::u16string_view description,
                EXCEPINFO* exception) noexcept {
  const auto bstr = [](std::u16string_view text) {
    return SysAllocStringLen(oleText(text.data()), static_cast<UINT>(text.size()));
  };
  if (exception != nullptr) {
    *exception = {};
    exception->scode = code;
    exception->bstrSource = bstr(source);
    exception->bstrDescription = bstr(description);
    return DISP_E_EXCEPTION;
  }
  ICreateErrorInfo* info = nullptr;
  if (FAILED(CreateErrorInfo(&info))) return code;
  info->SetSource(Text::attach(bstr(source)).get());
  info->SetDescription(Text::attach(bstr(description)).get());
  void* asErrorInfo = nullptr;
  if (SUCCEEDED(info->QueryInterface(IID_IErrorInfo, &asErrorInfo))) {
    auto* errorInfo = static_cast<IErrorInfo*>(asErrorInfo);
    SetErrorInfo(0, errorInfo);
    errorInfo->Release();
  }
  info->Release();
  return code;
}

/// Puts a call's arguments at their parameters' positions. Throws ArgumentError.
void placeArguments(const MemberRow& row, const DISPPARAMS& params, CallFrame& frame) {
  const std::size_t count = row.parameterCount - (row.takesList() ? 1u : 0u);
  const auto place = [&](std::size_t position, VARIANT& argument) {
    if (position >= count || frame.argument(position) != nullptr)
      throw ArgumentError{DISP_E_PARAMNOTFOUND, &argument};
    frame.argument(position) = &argument;
  };
  // The named ones come first. A property's new value is one of them, and its last parameter.
  std::size_t positionalCount = count;
  for (UINT i = 0; i < params.cNamedArgs; ++i) {
    const DISPID id = params.rgdispidNamedArgs[i];
    const bool isNewValue = id == DISPID_PROPERTYPUT && row.kind == MemberKind::Put;
    if (isNewValue) --positionalCount;
    place(isNewValue ? count - 1 : static_cast<std::size_t>(id), params.rgvarg[i]);
  }
  for (UINT i = 0; i < params.cArgs - params.cNamedArgs; ++i) {
    VARIANT& argument = params.rgvarg[params.cArgs - 1 - i];  // the last one stands first
    if (i < positionalCount)
      place(i, argument);
    else if (row.takesList())
      frame.list().push_back(argument);
    else
      throw ArgumentError{DISP_E_BADPARAMCOUNT, nullptr};
  }
  for (std::size_t i = 0; i < count; ++i) {
    const ParameterRow& parameter = row.parameterRows[i];
    VARIANT*& argument = frame.argument(i);
    const bool isGap = argument != nullptr && parameter.type.type != InterfaceType::Variant &&
                       isMissing(*argument);
    if ((argument == nullptr || isGap) && !parameter.optional)
      throw ArgumentError{isGap ? DISP_E_PARAMNOTOPTIONAL : DISP_E_BADPARAMCOUNT, argument};
    if (isGap) argument = nullptr;
  }
}

}  // namespace

std::atomic<std::int32_t>& moduleUseCount() noexcept {
  static std::atomic<std::int32_t> count = 0;
  return count;
}

std::span<const AnyFunction> dispatchEntries() noexcept {
  static const std::array entries = {
      entry(&tableQueryInterface),   entry(&tableAddRef),      entry(&tableRelease),
      entry(&tableGetTypeInfoCount), entry(&tableGetTypeInfo), entry(&tableGetIDsOfNames),
      entry(&tableInvoke),
  };
  return entries;
}

HRESULT publishCurrentException(EXCEPINFO* exception) noexcept {
  const std::int32_t number = setPendingException();
  try {
    throw;
  } catch (const AutomationError& error) {
    return publish(error.code(), error.source(), error.description(), exception);
  } catch (...) {  // no AutomationError is made here, as that takes memory
    return publish(errorCode(number), kLibraryName,
                   number == error_number::kOutOfMemory ? u"Out of memory" : u"Internal error",
                   exception);
  }
}

DispatchObject::DispatchObject(const ClassDescription& description, Destroy destroy) noexcept
    : table_(description.functionTable()), class_(description), destroy_(destroy) {
  ++moduleUseCount();
}

DispatchObject::~DispatchObject() { --moduleUseCount(); }

ULONG DispatchObject::addRef() noexcept {
  return references_.fetch_add(1, std::memory_order_relaxed) + 1;
}

ULONG DispatchObject::release() noexcept {
  const ULONG left = references_.fetch_sub(1, std::memory_order_acq_rel) - 1;
  if (left == 0) {
    // Whatever the destruction releases may come back to this object for a moment.
    references_.store(1, std::memory_order_relaxed);
    destroy_(*this);
  }
  return left;
}

HRESULT DispatchObject::queryInterface(REFIID iid, void** object) noexcept {
  if (object == nullptr) return E_POINTER;
  if (iid == IID_IUnknown || iid == IID_IDispatch || iid == class_.identity().interfaceId)
    *object = this;
  else if (iid == IID_ISupportErrorInfo)
    *object = static_cast<ISupportErrorInfo*>(&errorSupport_);
  else if (iid == IID_IProvideClassInfo)
    *object = static_cast<IProvideClassInfo*>(&classInfo_);
  else
    *object = nullptr;
  if (*object == nullptr) return E_NOINTERFACE;
  addRef();
  return S_OK;
}

HRESULT DispatchObject::typeInfo(REFIID id, ITypeInfo** info) noexcept {
  if (info == nullptr) return E_POINTER;
  const ClassIdentity& identity = class_.identity();
  return automation::typeInformation(id, identity.classId, identity.name, info);
}

HRESULT DispatchObject::invoke(DISPID id, WORD flags, const DISPPARAMS& params, VARIANT* result,
                               EXCEPINFO* exception, UINT* argumentError) noexcept {
  const MemberRow* row = class_.find(id, flags);
  if (row == nullptr) return DISP_E_MEMBERNOTFOUND;
  if (params.cNamedArgs > params.cArgs) return E_INVALIDARG;
  // Arguments to a plain property belong to the default member of the object it returns.
  const bool isForwarded =
      row->kind == MemberKind::Get && row->parameterCount == 0 && params.cArgs > 0;
  try {
    CallFrame frame(*row);
    if (!isForwarded) placeArguments(*row, params, frame);
    Variant value;
    row->late(*this, frame, value);
    if (isForwarded) {
      if (value.vt != VT_DISPATCH || value.pdispVal == nullptr) return DISP_E_BADPARAMCOUNT;
      DISPPARAMS forwarded = params;
      return value.pdispVal->Invoke(DISPID_VALUE, IID_NULL, kUserLocale, flags, &forwarded, result,
                                    exception, argumentError);
    }
    if (result != nullptr) *result = value.release();
    return S_OK;
  } catch (const ArgumentError& error) {
    if (error.argument != nullptr && argumentError != nullptr)
      *argumentError = static_cast<UINT>(error.argument - params.rgvarg);
    return error.code;
  } catch (...) {
    return publishCurrentException(exception);
  }
}

HRESULT DispatchObject::ErrorSupport::InterfaceSupportsErrorInfo(REFIID iid) noexcept {
  return iid == owner_.class_.identity().interfaceId ? S_OK : S_FALSE;
}

HRESULT DispatchObject::ClassInfo::GetClassInfo(ITypeInfo** info) noexcept {
  return owner_.typeInfo(owner_.class_.identity().classId, info);
}

}  // namespace quendal
