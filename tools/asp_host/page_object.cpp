#include "page_object.h"

#include <algorithm>
#include <map>
#include <utility>

#include "ref_counted.h"

namespace quendal::host {
namespace {

constexpr int kWrongArguments = 450;
constexpr WORD kAnyPut = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;

class Enumerator final : public RefCounted<IEnumVARIANT> {
 public:
  explicit Enumerator(std::vector<Variant> elements) : elements_(std::move(elements)) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    return answer(iid, {{IID_IEnumVARIANT, static_cast<IEnumVARIANT*>(this)}}, object);
  }
  HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* items, ULONG* fetched) override {
    ULONG given = 0;
    for (; given < count && next_ < elements_.size(); ++given)
      items[given] = Variant(elements_[next_++]).release();
    if (fetched != nullptr) *fetched = given;
    return given == count ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
    const std::size_t skipped = std::min<std::size_t>(count, elements_.size() - next_);
    next_ += skipped;
    return skipped == count ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Reset() override {
    next_ = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT**) override { return E_NOTIMPL; }

 private:
  std::vector<Variant> elements_;
  std::size_t next_ = 0;
};

HRESULT raise(EXCEPINFO* exception, HRESULT code, std::u16string_view description) {
  if (exception == nullptr) return code;
  *exception = {};
  exception->scode = code;
  exception->bstrSource = newBstr(u"ASP host");
  exception->bstrDescription = newBstr(description);
  return DISP_E_EXCEPTION;
}

/// In call order, a put value last.
std::vector<VARIANT> argumentsOf(const DISPPARAMS& params) {
  std::vector<VARIANT> arguments;
  for (UINT i = params.cArgs; i-- > 0;) arguments.push_back(follow(params.rgvarg[i]));
  while (!arguments.empty() && isMissing(arguments.back())) arguments.pop_back();
  return arguments;
}

}  // namespace

struct PageObject::Definition {
  struct Member {
    Count count;
    Call read;
    Call write;
    bool isProperty = false;
  };
  StopFlag stop;
  std::vector<Member> members{1};  // by DISPID; the first is the default member
  std::map<std::u16string, DISPID, NameOrder> ids;
  std::function<std::vector<Variant>()> elements;

  Member& add(std::u16string_view name) {
    ids.emplace(name, static_cast<DISPID>(members.size()));
    return members.emplace_back();
  }
};

class PageObject::Dispatch final : public RefCounted<IDispatch> {
 public:
  explicit Dispatch(std::shared_ptr<const Definition> definition)
      : definition_(std::move(definition)) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    return answer(iid, {{IID_IDispatch, static_cast<IDispatch*>(this)}}, object);
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                          DISPID* ids) override {
    std::fill_n(ids, count, DISPID_UNKNOWN);
    const auto found = definition_->ids.find(std::u16string_view(plainText(names[0])));
    if (found != definition_->ids.end()) ids[0] = found->second;
    return ids[0] == DISPID_UNKNOWN || count > 1 ? DISP_E_UNKNOWNNAME : S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID locale, WORD flags, DISPPARAMS* params,
                                   VARIANT* result, EXCEPINFO* exception, UINT*) override {
    try {
      if (*definition_->stop)
        throw AutomationError(error_number::kInvalidCall, u"The page has ended");
      Variant value;
      if (id == DISPID_NEWENUM) {
        if (!definition_->elements) return DISP_E_MEMBERNOTFOUND;
        value.punkVal = makeCounted<Enumerator>(definition_->elements()).release();
        value.vt = VT_UNKNOWN;
      } else {
        if (id < 0 || static_cast<std::size_t>(id) >= definition_->members.size())
          return DISP_E_MEMBERNOTFOUND;
        const bool isPut = (flags & kAnyPut) != 0;
        if (params->cNamedArgs > (isPut ? 1u : 0u)) return DISP_E_NONAMEDARGS;
        const Definition::Member& member = definition_->members[static_cast<std::size_t>(id)];
        const std::vector<VARIANT> arguments = argumentsOf(*params);
        const std::size_t count = arguments.size() - (isPut && !arguments.empty() ? 1u : 0u);
        if (member.isProperty && count > 0) {
          const Object inner = Object::from(member.read({}));
          return inner.dispatch()->Invoke(DISPID_VALUE, IID_NULL, locale, flags, params, result,
                                          exception, nullptr);
        }
        const Call& call = isPut ? member.write : member.read;
        if (call == nullptr) return DISP_E_MEMBERNOTFOUND;
        if (count < member.count.least || count > member.count.most || (isPut && arguments.empty()))
          throw AutomationError(kWrongArguments);
        value = call(arguments);
      }
      if (result != nullptr) *result = value.release();
      return S_OK;
    } catch (const AutomationError& error) {
      return raise(exception, error.code(), error.description());
    } catch (const std::exception&) {
      return raise(exception, errorCode(error_number::kOutOfMemory), u"Out of memory");
    }
  }

 private:
  std::shared_ptr<const Definition> definition_;
};

PageObject::PageObject(StopFlag stop) : definition_(std::make_shared<Definition>()) {
  definition_->stop = std::move(stop);
}

PageObject& PageObject::method(std::u16string_view name, Count count, Call call) {
  Definition::Member& member = definition_->add(name);
  member.count = count;
  member.read = std::move(call);
  return *this;
}

PageObject& PageObject::property(std::u16string_view name, std::function<Variant()> read,
                                 std::function<void(const VARIANT&)> write) {
  Definition::Member& member = definition_->add(name);
  member.isProperty = true;
  member.read = [read = std::move(read)](Arguments) { return read(); };
  if (write)
    member.write = [write = std::move(write)](Arguments arguments) {
      write(arguments.back());
      return Variant();
    };
  return *this;
}

PageObject& PageObject::defaultMember(Count count, Call read, Call write) {
  Definition::Member& member = definition_->members.front();
  member.count = count;
  member.read = std::move(read);
  member.write = std::move(write);
  return *this;
}

PageObject& PageObject::defaultName(std::u16string_view name) {
  definition_->ids.emplace(name, DISPID_VALUE);
  return *this;
}

PageObject& PageObject::elements(std::function<std::vector<Variant>()> list) {
  definition_->elements = std::move(list);
  return *this;
}

Object PageObject::object() const {
  return Object::attach(makeCounted<Dispatch>(definition_).release());
}

}  // namespace quendal::host
