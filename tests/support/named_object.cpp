#include "support/named_object.h"

#include <string>

#include "support/named_type.h"

namespace quendal::test {
namespace {

class NamedObject final : public IDispatch {
 public:
  NamedObject(std::u16string_view name, const Object& inner, std::function<void()> whenAsked)
      : name_(name), inner_(inner), whenAsked_(std::move(whenAsked)) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    *object = nullptr;
    if (!(iid == IID_IUnknown) && !(iid == IID_IDispatch)) return E_NOINTERFACE;
    *object = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
    if (whenAsked_) whenAsked_();
    return namedType(name_, info);
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) override {
    return inner_.dispatch()->GetIDsOfNames(reserved, names, count, locale, ids);
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags,
                                   DISPPARAMS* params, VARIANT* result, EXCEPINFO* exception,
                                   UINT* argumentError) override {
    return inner_.dispatch()->Invoke(id, reserved, locale, flags, params, result, exception,
                                     argumentError);
  }

 private:
  ULONG references_ = 1;
  std::u16string name_;
  Object inner_;
  std::function<void()> whenAsked_;
};

}  // namespace

Object named(std::u16string_view className, const Object& inner, std::function<void()> whenAsked) {
  return Object::attach(new NamedObject(className, inner, std::move(whenAsked)));
}

}  // namespace quendal::test
