#include <quendal/object.h>

#include <memory>
#include <vector>

#include "automation/dispatch.h"
#include "core/array_view.h"

namespace quendal {
namespace {

/// What an object reports when it raises; frees its strings.
class Exception {
 public:
  Exception() = default;
  Exception(const Exception&) = delete;
  Exception& operator=(const Exception&) = delete;
  ~Exception() {
    SysFreeString(info_.bstrSource);
    SysFreeString(info_.bstrDescription);
    SysFreeString(info_.bstrHelpFile);
  }

  EXCEPINFO* put() noexcept { return &info_; }

  /// Throws the failure with which a call ended: this, or the code alone.
  [[noreturn]] void raise(HRESULT result) {
    if (result != DISP_E_EXCEPTION) throw AutomationError::fromRuntime(result);
    if (info_.pfnDeferredFillIn != nullptr) info_.pfnDeferredFillIn(&info_);
    const HRESULT code = info_.scode != 0 ? info_.scode : errorCode(info_.wCode);
    throw AutomationError::passedOn(FAILED(code) ? code : E_FAIL, viewOf(info_.bstrSource),
                                    viewOf(info_.bstrDescription));
  }

 private:
  EXCEPINFO info_{};
};

struct ReleaseEnumerator {
  void operator()(IEnumVARIANT* enumerator) const noexcept { enumerator->Release(); }
};
using Enumerator = std::unique_ptr<IEnumVARIANT, ReleaseEnumerator>;

/// How a plain property answers when it is given arguments, without having run: by the automation
/// rules, or as script engines do. What a member that ran has raised comes as an exception.
constexpr bool isPlainProperty(HRESULT code) noexcept {
  return code == DISP_E_BADPARAMCOUNT || code == DISP_E_MEMBERNOTFOUND ||
         code == errorCode(error_number::kWrongArguments);
}

HRESULT tryInvoke(IDispatch* object, DISPID id, WORD flags, Object::Arguments arguments,
                  Variant& result, Exception& exception) {
  // The callee borrows the arguments, last one first.
  std::vector<VARIANTARG> reversed(arguments.rbegin(), arguments.rend());
  DISPID putId = DISPID_PROPERTYPUT;
  DISPPARAMS params{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
  const bool isPut = (flags & DISPATCH_PROPERTYPUT) != 0;
  if (isPut) {
    params.rgdispidNamedArgs = &putId;
    params.cNamedArgs = 1;
  }
  UINT argumentError = 0;
  return object->Invoke(id, IID_NULL, kUserLocale, flags, &params, isPut ? nullptr : &result,
                        exception.put(), &argumentError);
}

}  // namespace

Object::Object(IDispatch* object) noexcept : object_(object) {
  if (object_ != nullptr) object_->AddRef();
}

Object::~Object() {
  if (object_ != nullptr) object_->Release();
}

Object Object::attach(IDispatch* object) noexcept {
  Object result;
  result.object_ = object;
  return result;
}

Object Object::from(const VARIANT& value) {
  const VARIANT plain = follow(value);
  if (plain.vt == VT_DISPATCH) return Object(plain.pdispVal);
  if (plain.vt != VT_UNKNOWN) throw AutomationError(error_number::kObjectRequired);
  if (plain.punkVal == nullptr) return {};
  void* found = nullptr;
  check(plain.punkVal->QueryInterface(IID_IDispatch, &found));
  return attach(static_cast<IDispatch*>(found));
}

DISPID Object::idOf(std::u16string_view name) const {
  if (object_ == nullptr) throw AutomationError(error_number::kObjectNotSet);
  DISPID id = DISPID_UNKNOWN;
  if (FAILED(automation::memberId(object_, name, &id)))
    throw AutomationError(error_number::kNoSuchMember);
  return id;
}

Variant Object::invoke(DISPID id, WORD flags, Arguments arguments) const {
  if (object_ == nullptr) throw AutomationError(error_number::kObjectNotSet);
  Variant result;
  Exception exception;
  const HRESULT code = tryInvoke(object_, id, flags, arguments, result, exception);
  if (FAILED(code)) exception.raise(code);
  return result;
}

// A call that failed is made in another way only where the object has refused it without running
// the member: a member of a page's object may have effects, and must not have them twice.
Variant Object::getWith(std::u16string_view name, Arguments arguments) const {
  const DISPID id = idOf(name);
  const bool isPlain = arguments.empty();
  Variant result;
  Exception exception;
  // A property without arguments is only read: some script engines call the value otherwise.
  const HRESULT code = tryInvoke(
      object_, id, isPlain ? DISPATCH_PROPERTYGET : DISPATCH_PROPERTYGET | DISPATCH_METHOD,
      arguments, result, exception);
  if (SUCCEEDED(code)) return result;
  if (isPlain) {
    if (code != DISP_E_MEMBERNOTFOUND) exception.raise(code);
    return invoke(id, DISPATCH_METHOD, {});
  }
  Variant value;
  Exception ignored;
  if (!isPlainProperty(code) ||
      FAILED(tryInvoke(object_, id, DISPATCH_PROPERTYGET, {}, value, ignored)) || !isObject(value))
    exception.raise(code);
  return from(value).invoke(DISPID_VALUE, DISPATCH_PROPERTYGET, arguments);
}

Variant Object::callWith(std::u16string_view name, Arguments arguments) const {
  return invoke(idOf(name), DISPATCH_METHOD, arguments);
}

void Object::putWith(std::u16string_view name, Arguments indexesAndValue) const {
  invoke(idOf(name), DISPATCH_PROPERTYPUT, indexesAndValue);
}

Variant Object::defaultValue() const {
  return invoke(DISPID_VALUE, DISPATCH_PROPERTYGET | DISPATCH_METHOD, {});
}

void Object::forEach(const std::function<void(const Variant&)>& visit) const {
  Variant created;
  try {
    created = invoke(DISPID_NEWENUM, DISPATCH_PROPERTYGET | DISPATCH_METHOD, {});
  } catch (const AutomationError& error) {
    if (error.number() != error_number::kNoSuchMember) throw;
    throw AutomationError(error_number::kNotACollection);
  }
  void* found = nullptr;
  if (!isObject(created) || created.punkVal == nullptr ||
      FAILED(created.punkVal->QueryInterface(IID_IEnumVARIANT, &found)))
    throw AutomationError(error_number::kNotACollection);
  const Enumerator enumerator(static_cast<IEnumVARIANT*>(found));
  while (true) {
    Variant element;
    ULONG fetched = 0;
    const HRESULT code = enumerator->Next(1, &element, &fetched);
    check(code);
    if (code != S_OK || fetched == 0) return;
    visit(element);
  }
}

void forEach(const VARIANT& collection, const std::function<void(const Variant&)>& visit) {
  const VARIANT plain = follow(collection);
  if (isObject(plain)) return Object::from(plain).forEach(visit);
  if ((plain.vt & VT_ARRAY) == 0) throw AutomationError(error_number::kNotACollection);
  if (plain.parray == nullptr) return;  // no elements yet
  const ArrayView array(plain);
  for (std::size_t i = 0; i < array.size(); ++i) visit(Variant::copyOf(array.at(i)));
}

}  // namespace quendal
