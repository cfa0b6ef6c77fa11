#include <quendal/text.h>

#include <utility>

#include "automation/counted.h"
#include "automation/posix/variants.h"
#include "automation/reference.h"

namespace quendal::automation {
namespace {

HRESULT set(Text& field, const OLECHAR* text) noexcept {
  return guarded([&] {
    field = text == nullptr ? Text() : Text(text);
    return S_OK;
  });
}

HRESULT copy(const Text& field, BSTR* out) noexcept {
  if (out == nullptr) return E_POINTER;
  *out = nullptr;
  return guarded([&] {
    *out = Text(field).release();
    return S_OK;
  });
}

class ErrorInfo final : public Counted<ICreateErrorInfo, IErrorInfo> {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    return answer(iid,
                  {{IID_ICreateErrorInfo, static_cast<ICreateErrorInfo*>(this)},
                   {IID_IErrorInfo, static_cast<IErrorInfo*>(this)}},
                  object);
  }

  HRESULT STDMETHODCALLTYPE SetGUID(REFGUID guid) override {
    guid_ = guid;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE SetSource(LPOLESTR source) override { return set(source_, source); }
  HRESULT STDMETHODCALLTYPE SetDescription(LPOLESTR text) override {
    return set(description_, text);
  }
  HRESULT STDMETHODCALLTYPE SetHelpFile(LPOLESTR file) override { return set(helpFile_, file); }
  HRESULT STDMETHODCALLTYPE SetHelpContext(DWORD context) override {
    helpContext_ = context;
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE GetGUID(GUID* guid) override {
    if (guid == nullptr) return E_POINTER;
    *guid = guid_;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetSource(BSTR* source) override { return copy(source_, source); }
  HRESULT STDMETHODCALLTYPE GetDescription(BSTR* text) override { return copy(description_, text); }
  HRESULT STDMETHODCALLTYPE GetHelpFile(BSTR* file) override { return copy(helpFile_, file); }
  HRESULT STDMETHODCALLTYPE GetHelpContext(DWORD* context) override {
    if (context == nullptr) return E_POINTER;
    *context = helpContext_;
    return S_OK;
  }

 private:
  GUID guid_ = GUID_NULL;
  Text source_;
  Text description_;
  Text helpFile_;
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
  *info = nullptr;
  return guarded([&] {
    *info = makeCounted<ErrorInfo>().release();
    return S_OK;
  });
}
