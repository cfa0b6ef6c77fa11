#include <quendal/host_object.h>

#include <algorithm>
#include <deque>
#include <exception>
#include <map>
#include <new>
#include <utility>

#include "automation/counted.h"
#include "automation/host_type.h"
#include "base/name_order.h"
#include "base/utf8.h"

namespace quendal {
namespace {

using automation::Counted;
using automation::makeCounted;

constexpr WORD kAnyPut = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;

HRESULT report(EXCEPINFO* exception, const AutomationError& error) {
  if (exception == nullptr) return error.code();
  *exception = {};
  exception->scode = error.code();
  exception->bstrSource = newBstr(error.source());
  exception->bstrDescription = newBstr(error.description());
  return DISP_E_EXCEPTION;
}

AutomationError currentError() {
  try {
    throw;
  } catch (const AutomationError& error) {
    return error;
  } catch (const std::bad_alloc&) {
    return AutomationError(error_number::kOutOfMemory);
  } catch (const std::exception& error) {
    return AutomationError(error_number::kInternal, fromUtf8(error.what()));
  } catch (...) {
    return AutomationError(error_number::kInternal);
  }
}

/// Runs what the host has written and makes what it throws what an object reports.
template <class Body>
HRESULT guarded(EXCEPINFO* exception, Body&& body) noexcept {
  try {
    return body();
  } catch (...) {
    try {
      return report(exception, currentError());
    } catch (...) {
      return E_OUTOFMEMORY;
    }
  }
}

class Enumerator final : public Counted<IEnumVARIANT> {
 public:
  explicit Enumerator(HostObject::Next next) : next_(std::move(next)) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    return answer(iid, {{IID_IEnumVARIANT, static_cast<IEnumVARIANT*>(this)}}, object);
  }
  HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* items, ULONG* fetched) override {
    ULONG given = 0;
    const HRESULT ended = guarded(nullptr, [&] {
      for (Variant element; given < count && next_(element); ++given)
        items[given] = element.release();
      return given == count ? S_OK : S_FALSE;
    });
    if (FAILED(ended))
      while (given > 0) VariantClear(&items[--given]);
    if (fetched != nullptr) *fetched = given;
    return ended;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Reset() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT**) override { return E_NOTIMPL; }

 private:
  HostObject::Next next_;
};

std::vector<VARIANT> argumentsOf(const DISPPARAMS& params) {
  std::vector<VARIANT> arguments;
  for (UINT i = params.cArgs; i-- > 0;) arguments.push_back(follow(params.rgvarg[i]));
  while (!arguments.empty() && isMissing(arguments.back())) arguments.pop_back();
  return arguments;
}

}  // namespace

struct HostObject::Definition {
  struct Member {
    Call get;
    Call put;
    Count count;
  };
  // By DISPID; the first is the default member. They stay where they are when more are added.
  std::deque<Member> members{1};
  std::map<std::u16string, DISPID, NameOrder> ids;
  std::function<HostObject::Next()> begin;
  std::function<void()> beforeCalls;
  std::u16string className;
};

class HostObject::Dispatch final : public Counted<IDispatch> {
 public:
  explicit Dispatch(std::shared_ptr<const Definition> definition)
      : definition_(std::move(definition)) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    return answer(iid, {{IID_IDispatch, static_cast<IDispatch*>(this)}}, object);
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = definition_->className.empty() ? 0 : 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
    *info = nullptr;
    if (definition_->className.empty()) return E_NOTIMPL;
    const std::shared_ptr<const Definition> definition = definition_;
    return guarded(nullptr, [&] {
      if (definition->beforeCalls) definition->beforeCalls();
      return automation::hostType(definition->className, info);
    });
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                          DISPID* ids) override {
    std::fill_n(ids, count, DISPID_UNKNOWN);
    const auto found = definition_->ids.find(std::u16string_view(plainText(names[0])));
    if (found != definition_->ids.end()) ids[0] = found->second;
    return ids[0] == DISPID_UNKNOWN || count > 1 ? DISP_E_UNKNOWNNAME : S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params,
                                   VARIANT* result, EXCEPINFO* exception, UINT*) override {
    // A member may let go of the object that it is called on.
    const std::shared_ptr<const Definition> definition = definition_;
    return guarded(exception, [&]() -> HRESULT {
      if (definition->beforeCalls) definition->beforeCalls();
      Variant value;
      if (id == DISPID_NEWENUM) {
        if (!definition->begin) return DISP_E_MEMBERNOTFOUND;
        value.punkVal = makeCounted<Enumerator>(definition->begin()).release();
        value.vt = VT_UNKNOWN;
      } else {
        if (id < 0 || static_cast<std::size_t>(id) >= definition->members.size())
          return DISP_E_MEMBERNOTFOUND;
        const auto& [get, put, wanted] = definition->members[static_cast<std::size_t>(id)];
        const bool isPut = (flags & kAnyPut) != 0;
        const Call& call = isPut ? put : get;
        if (!call) return DISP_E_MEMBERNOTFOUND;
        if (params->cNamedArgs > (isPut ? 1u : 0u)) return DISP_E_NONAMEDARGS;
        const std::vector<VARIANT> arguments = argumentsOf(*params);
        if (isPut && arguments.empty()) return DISP_E_BADPARAMCOUNT;
        const std::size_t count = arguments.size() - (isPut ? 1 : 0);
        if (count < wanted.least || count > wanted.most) return DISP_E_BADPARAMCOUNT;
        value = call(arguments);
      }
      if (result != nullptr) *result = value.release();
      return S_OK;
    });
  }

 private:
  std::shared_ptr<const Definition> definition_;
};

HostObject::HostObject() : definition_(std::make_shared<Definition>()) {}

HostObject& HostObject::member(std::u16string_view name, Call call, Call put, Count count) {
  definition_->ids.insert_or_assign(std::u16string(name),
                                    static_cast<DISPID>(definition_->members.size()));
  definition_->members.push_back({std::move(call), std::move(put), count});
  return *this;
}

HostObject& HostObject::property(std::u16string_view name, std::function<Variant()> get,
                                 std::function<void(const VARIANT&)> put) {
  Call write;
  if (put)
    write = [put = std::move(put)](Arguments arguments) {
      put(arguments.back());
      return Variant();
    };
  return member(name, [get = std::move(get)](Arguments) { return get(); }, std::move(write),
                {0, 0});
}

HostObject& HostObject::value(std::u16string_view name, Variant value) {
  const auto held = std::make_shared<Variant>(std::move(value));
  return property(
      name, [held] { return *held; },
      [held](const VARIANT& newValue) { *held = Variant::copyOf(newValue); });
}

HostObject& HostObject::defaultMember(Call call, Call put, Count count) {
  definition_->members.front() = {std::move(call), std::move(put), count};
  return *this;
}

HostObject& HostObject::defaultName(std::u16string_view name) {
  definition_->ids.insert_or_assign(std::u16string(name), DISPID_VALUE);
  return *this;
}

HostObject& HostObject::enumeration(std::function<Next()> begin) {
  definition_->begin = std::move(begin);
  return *this;
}

HostObject& HostObject::elements(std::function<std::vector<Variant>()> list) {
  return enumeration([list = std::move(list)]() -> Next {
    return [elements = list(), position = std::size_t{0}](Variant& element) mutable {
      if (position == elements.size()) return false;
      element = elements[position++];
      return true;
    };
  });
}

HostObject& HostObject::elements(std::vector<Variant> list) {
  return elements([list = std::move(list)] { return list; });
}

HostObject& HostObject::className(std::u16string_view name) {
  definition_->className = name;
  return *this;
}

HostObject& HostObject::beforeCalls(std::function<void()> step) {
  definition_->beforeCalls = std::move(step);
  return *this;
}

Object HostObject::object() const {
  return Object::attach(makeCounted<Dispatch>(definition_).release());
}

}  // namespace quendal
