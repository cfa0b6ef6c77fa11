#include "support/script_object.h"

#include <algorithm>
#include <atomic>
#include <map>
#include <utility>

#include "base/text.h"

namespace quendal::test {
namespace {

std::u16string lowerCase(std::u16string_view name) {
  std::u16string lower(name);
  std::ranges::transform(lower, lower.begin(), asciiLower);
  return lower;
}

/// Turns what a lambda throws into what an object reports.
template <class Body>
HRESULT guarded(EXCEPINFO* exception, Body&& body) {
  try {
    return body();
  } catch (const AutomationError& error) {
    if (exception == nullptr) return error.code();
    *exception = {};
    exception->scode = error.code();
    exception->bstrSource = newBstr(error.source());
    exception->bstrDescription = newBstr(error.description());
    return DISP_E_EXCEPTION;
  }
}

template <class Interface>
class Counted : public Interface {
 public:
  Counted() = default;
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

 protected:
  virtual ~Counted() = default;

  HRESULT answer(REFIID iid, REFIID own, void** object) {
    *object = nullptr;
    if (!(iid == IID_IUnknown) && !(iid == own)) return E_NOINTERFACE;
    *object = static_cast<Interface*>(this);
    AddRef();
    return S_OK;
  }

 private:
  std::atomic<ULONG> references_ = 1;
};

class Enumerator final : public Counted<IEnumVARIANT> {
 public:
  explicit Enumerator(ScriptObject::Next next) : next_(std::move(next)) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    return answer(iid, IID_IEnumVARIANT, object);
  }
  HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* items, ULONG* fetched) override {
    return guarded(nullptr, [&] {
      ULONG given = 0;
      for (Variant element; given < count && next_(element); ++given)
        items[given] = element.release();
      if (fetched != nullptr) *fetched = given;
      return given == count ? S_OK : S_FALSE;
    });
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Reset() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT**) override { return E_NOTIMPL; }

 private:
  ScriptObject::Next next_;
};

}  // namespace

struct ScriptObject::Definition {
  struct Member {
    Call get;
    Call put;
    bool takesArguments = true;
  };
  std::vector<Member> members{1};  // by DISPID; the first is the default member
  std::map<std::u16string, DISPID> ids;
  std::function<Next()> begin;

  Member& named(std::u16string_view name) {
    const auto [place, isNew] =
        ids.try_emplace(lowerCase(name), static_cast<DISPID>(members.size()));
    if (isNew) members.emplace_back();
    return members[static_cast<std::size_t>(place->second)];
  }
};

class ScriptObject::Dispatch final : public Counted<IDispatch> {
 public:
  explicit Dispatch(std::shared_ptr<const Definition> definition)
      : definition_(std::move(definition)) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    return answer(iid, IID_IDispatch, object);
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                          DISPID* ids) override {
    const auto found = definition_->ids.find(lowerCase(plainText(names[0])));
    std::fill_n(ids, count, DISPID_UNKNOWN);
    if (found != definition_->ids.end()) ids[0] = found->second;
    return ids[0] == DISPID_UNKNOWN || count > 1 ? DISP_E_UNKNOWNNAME : S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params,
                                   VARIANT* result, EXCEPINFO* exception, UINT*) override {
    return guarded(exception, [&] {
      const bool isPut = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
      if (params->cNamedArgs > (isPut ? 1u : 0u)) return DISP_E_NONAMEDARGS;
      Variant value;
      if (id == DISPID_NEWENUM) {
        if (definition_->begin == nullptr) return DISP_E_MEMBERNOTFOUND;
        value.punkVal = new Enumerator(definition_->begin());
        value.vt = VT_UNKNOWN;
      } else {
        if (id < 0 || static_cast<std::size_t>(id) >= definition_->members.size())
          return DISP_E_MEMBERNOTFOUND;
        const Definition::Member& member = definition_->members[static_cast<std::size_t>(id)];
        const Call& call = isPut ? member.put : member.get;
        if (call == nullptr) return DISP_E_MEMBERNOTFOUND;
        if (!isPut && !member.takesArguments && params->cArgs > 0) return DISP_E_BADPARAMCOUNT;
        std::vector<VARIANT> arguments(params->rgvarg, params->rgvarg + params->cArgs);
        std::ranges::reverse(arguments);
        value = call(arguments);
      }
      if (result != nullptr) *result = value.release();
      return S_OK;
    });
  }

 private:
  std::shared_ptr<const Definition> definition_;
};

ScriptObject::ScriptObject() : definition_(std::make_shared<Definition>()) {}

ScriptObject& ScriptObject::value(std::u16string_view name, Variant value) {
  const auto held = std::make_shared<Variant>(std::move(value));
  member(name, [held](Arguments) { return *held; });
  definition_->named(name).takesArguments = false;
  return onPut(name, [held](Arguments arguments) {
    *held = Variant::copyOf(arguments.back());
    return Variant();
  });
}

ScriptObject& ScriptObject::member(std::u16string_view name, Call call) {
  definition_->named(name).get = std::move(call);
  return *this;
}

ScriptObject& ScriptObject::onPut(std::u16string_view name, Call call) {
  definition_->named(name).put = std::move(call);
  return *this;
}

ScriptObject& ScriptObject::defaultMember(Call call) {
  definition_->members.front().get = std::move(call);
  return *this;
}

ScriptObject& ScriptObject::elements(std::vector<Variant> elements) {
  return enumeration([elements = std::move(elements)]() -> Next {
    return [elements, position = std::size_t{0}](Variant& element) mutable {
      if (position == elements.size()) return false;
      element = elements[position++];
      return true;
    };
  });
}

ScriptObject& ScriptObject::enumeration(std::function<Next()> begin) {
  definition_->begin = std::move(begin);
  return *this;
}

Object ScriptObject::object() const { return Object::attach(new Dispatch(definition_)); }

Variant arrayOf(const std::vector<Variant>& elements) {
  SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(elements.size()));
  if (array == nullptr) throw std::bad_alloc();
  Variant result = Variant::array(array);
  void* data = nullptr;
  check(SafeArrayAccessData(array, &data));
  auto* next = static_cast<VARIANT*>(data);
  for (const Variant& element : elements) *next++ = Variant(element).release();
  check(SafeArrayUnaccessData(array));
  return result;
}

}  // namespace quendal::test
