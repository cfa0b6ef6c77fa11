#include <quendal/automation.h>

#include <utility>

#include "automation/posix/ref_counted.h"
#include "automation/posix/strings.h"
#include "automation/reference.h"

namespace quendal::automation {
namespace {

// A text that one object owns.
class OwnedText {
 public:
  OwnedText() = default;
  OwnedText(const OwnedText&) = delete;
  OwnedText& operator=(const OwnedText&) = delete;
  ~OwnedText() { SysFreeString(text_); }

  HRESULT set(const OLECHAR* text) noexcept {
    BSTR copy = SysAllocString(text);
    if (copy == nullptr && text != nullptr) return E_OUTOFMEMORY;
    SysFreeString(std::exchange(text_, copy));
    return S_OK;
  }

  HRESULT copyTo(BSTR* out) const noexcept {
    if (out == nullptr) return E_POINTER;
    *out = text_ == nullptr ? nullptr : newText(viewOf(text_));
    return *out == nullptr && text_ != nullptr ? E_OUTOFMEMORY : S_OK;
  }

 private:
  BSTR text_ = nullptr;
};

class ErrorInfo final : public RefCounted<ICreateErrorInfo, IErrorInfo> {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    if (iid == IID_ICreateErrorInfo || iid == IID_IUnknown) {
      *object = static_cast<ICreateErrorInfo*>(this);
    } else if (iid == IID_IErrorInfo) {
      *object = static_cast<IErrorInfo*>(this);
    } else {
      *object = nullptr;
      return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE SetGUID(REFGUID guid) override {
    guid_ = guid;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE SetSource(LPOLESTR source) override { return source_.set(source); }
  HRESULT STDMETHODCALLTYPE SetDescription(LPOLESTR text) override {
    return description_.set(text);
  }
  HRESULT STDMETHODCALLTYPE SetHelpFile(LPOLESTR file) override { return helpFile_.set(file); }
  HRESULT STDMETHODCALLTYPE SetHelpContext(DWORD context) override {
    helpContext_ = context;
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE GetGUID(GUID* guid) override {
    if (guid == nullptr) return E_POINTER;
    *guid = guid_;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetSource(BSTR* source) override { return source_.copyTo(source); }
  HRESULT STDMETHODCALLTYPE GetDescription(BSTR* text) override {
    return description_.copyTo(text);
  }
  HRESULT STDMETHODCALLTYPE GetHelpFile(BSTR* file) override { return helpFile_.copyTo(file); }
  HRESULT STDMETHODCALLTYPE GetHelpContext(DWORD* context) override {
    if (context == nullptr) return E_POINTER;
    *context = helpContext_;
    return S_OK;
  }

 private:
  GUID guid_ = GUID_NULL;
  OwnedText source_;
  OwnedText description_;
  OwnedText helpFile_;
  DWORD helpContext_ = 0;
};

thread_local Reference<IErrorInfo> currentError;

}  // namespace
}  // namespace quendal::automation

using namespace quendal::automation;

HRESULT SetErrorInfo(ULONG, IErrorInfo* info) noexcept {
  if (info != nullptr) info->AddRef();
  const Reference<IErrorInfo> old = std::exchange(currentError, Reference<IErrorInfo>(info));
  return S_OK;
}

HRESULT GetErrorInfo(ULONG, IErrorInfo** info) noexcept {
  if (info == nullptr) return E_INVALIDARG;
  *info = currentError.release();
  return *info == nullptr ? S_FALSE : S_OK;
}

HRESULT CreateErrorInfo(ICreateErrorInfo** info) noexcept {
  if (info == nullptr) return E_INVALIDARG;
  *info = makeObject<ErrorInfo>();
  return *info == nullptr ? E_OUTOFMEMORY : S_OK;
}
