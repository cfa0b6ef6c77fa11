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

  // Only source and description are read here.
  HRESULT STDMETHODCALLTYPE SetGUID(REFGUID) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetSource(LPOLESTR source) override { return set(source_, source); }
  HRESULT STDMETHODCALLTYPE SetDescription(LPOLESTR text) override {
    return set(description_, text);
  }
  HRESULT STDMETHODCALLTYPE SetHelpFile(LPOLESTR) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetHelpContext(DWORD) override { return E_NOTIMPL; }

  HRESULT STDMETHODCALLTYPE GetGUID(GUID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetSource(BSTR* source) override { return copy(source_, source); }
  HRESULT STDMETHODCALLTYPE GetDescription(BSTR* text) override { return copy(description_, text); }
  HRESULT STDMETHODCALLTYPE GetHelpFile(BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetHelpContext(DWORD*) override { return E_NOTIMPL; }

 private:
  Text source_;
  Text description_;
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
