#include "support/named_object.h"

#include <string>
#include <utility>

#include "automation/counted.h"
#include "automation/host_type.h"

namespace quendal::test {
namespace {

class NamedObject final : public automation::Counted<IDispatch> {
 public:
  NamedObject(std::u16string_view name, const Object& inner, std::function<void()> whenAsked)
      : name_(name), inner_(inner), whenAsked_(std::move(whenAsked)) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    return answer(iid, {{IID_IDispatch, static_cast<IDispatch*>(this)}}, object);
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
    if (whenAsked_) whenAsked_();
    return automation::hostType(name_, info);
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
  std::u16string name_;
  Object inner_;
  std::function<void()> whenAsked_;
};

}  // namespace

Object named(std::u16string_view className, const Object& inner, std::function<void()> whenAsked) {
  return Object::attach(
      automation::makeCounted<NamedObject>(className, inner, std::move(whenAsked)).release());
}

}  // namespace quendal::test
