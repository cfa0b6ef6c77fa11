#include "boundary/page_object.h"

#include <cstdint>
#include <iterator>
#include <string_view>

#include "automation/dispatch.h"
#include "base/text.h"
#include "boundary/allocation.h"
#include "boundary/member_call.h"
#include "boundary/sandbox.h"
#include "boundary/values.h"
#include "core/dictionary.h"

namespace quendal::fuzz {
namespace {

/// What a member answers when it answers as expected.
enum class Suits { Text, Number, Flag, End, Object, Array, Value, Path };

struct KnownMember {
  std::u16string_view name;
  Suits suits;
};

constexpr KnownMember kMembers[] = {
    {u"", Suits::Text},  // the default member
    {u"Session", Suits::Object},
    {u"Application", Suits::Object},
    {u"Request", Suits::Object},
    {u"Response", Suits::Object},
    {u"Server", Suits::Object},
    {u"ServerVariables", Suits::Object},
    {u"MapPath", Suits::Path},
    {u"Keys", Suits::Array},
    {u"Items", Suits::Array},
    {u"Item", Suits::Value},
    {u"Exists", Suits::Flag},
    {u"Count", Suits::Number},
    {u"parseError", Suits::Object},
    {u"errorCode", Suits::Number},
    {u"Number", Suits::Number},
    {u"Description", Suits::Text},
    {u"source", Suits::Text},
    {u"reason", Suits::Text},
    {u"State", Suits::Number},
    {u"RecordCount", Suits::Number},
    {u"Fields", Suits::Object},
    {u"BOF", Suits::Flag},
    {u"EOF", Suits::End},
    {u"name", Suits::Text},
    {u"Value", Suits::Value},
};

/// What makes an object answer otherwise.
enum Habit : std::uint8_t {
  kActsWhenAsked = 1,   // for its type or for a member's identifier
  kActsWhenItGoes = 2,  // as a class with Class_Terminate
  kStrict = 4,          // lacks some members
  kRaises = 8,          // often
  kStrange = 16,        // answers with values that do not suit
};

constexpr std::u16string_view kTypeNames[] = {u"",      u"Recordset", u"Dictionary", u"_Context",
                                              u"Error", u"_",         u"DOMDocument"};

template <class Interface>
class Counted : public Interface {
 public:
  explicit Counted(Page& page) : page_(page) { page_.objectMade(); }
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const AllocationScope own(false);
    if (--references_ > 0) return references_;
    references_ = 1;  // for as long as it says good-bye
    goes();
    delete this;
    return 0;
  }

 protected:
  virtual ~Counted() { page_.objectGone(); }
  virtual void goes() {}

  HRESULT answer(REFIID iid, REFIID own, void** object) {
    *object = nullptr;
    if (!(iid == IID_IUnknown) && !(iid == own)) return E_NOINTERFACE;
    *object = static_cast<Interface*>(this);
    ++references_;
    return S_OK;
  }

  Page& page_;

 private:
  ULONG references_ = 1;
};

/// A code that an object raises or returns. Never 51, which only the library itself would raise.
HRESULT anyFailure(Page& page) {
  constexpr HRESULT kFailures[] = {E_FAIL,
                                   E_NOTIMPL,
                                   E_OUTOFMEMORY,
                                   E_UNEXPECTED,
                                   DISP_E_MEMBERNOTFOUND,
                                   DISP_E_BADPARAMCOUNT,
                                   DISP_E_TYPEMISMATCH,
                                   DISP_E_OVERFLOW,
                                   DISP_E_ARRAYISLOCKED,
                                   errorCode(438),
                                   errorCode(450),
                                   errorCode(5002),
                                   errorCode(13),
                                   errorCode(7),
                                   errorCode(9),
                                   errorCode(424),
                                   S_FALSE,
                                   0};
  return page.in.oneOf(kFailures);
}

class PageEnumerator final : public Counted<IEnumVARIANT> {
 public:
  using Counted::Counted;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    return answer(iid, IID_IEnumVARIANT, object);
  }
  HRESULT STDMETHODCALLTYPE Next(ULONG, VARIANT* items, ULONG* fetched) override {
    const AllocationScope own(false);
    if (fetched != nullptr) *fetched = 0;
    if (!page_.mayGoOn()) return S_FALSE;
    page_.act();
    if (page_.in.byte() % 4 == 0) return page_.in.oneIn(4) ? anyFailure(page_) : S_FALSE;
    *items = anyValue(page_).release();
    if (fetched != nullptr) *fetched = 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Reset() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT**) override { return E_NOTIMPL; }
};

class PageObject final : public Counted<IDispatch> {
 public:
  PageObject(Page& page, std::uint8_t habits, std::u16string_view typeName)
      : Counted(page), habits_(habits), typeName_(typeName) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    return answer(iid, IID_IDispatch, object);
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = typeName_.empty() ? 0 : 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
    const AllocationScope own(false);
    *info = nullptr;
    actWhen(kActsWhenAsked);
    if (typeName_.empty()) return E_NOTIMPL;
    return automation::typeInformation(IID_NULL, IID_NULL, typeName_, info);
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                          DISPID* ids) override {
    const AllocationScope own(false);
    std::fill_n(ids, count, DISPID_UNKNOWN);
    const std::u16string_view name = plainText(names[0]);
    DISPID id = static_cast<DISPID>(std::size(kMembers));  // a member like any other
    for (std::size_t i = 0; i < std::size(kMembers); ++i)
      if (equalNoCase(kMembers[i].name, name)) id = static_cast<DISPID>(i);
    actWhen(kActsWhenAsked);
    if ((habits_ & kStrict) != 0 && page_.in.oneIn(3)) return DISP_E_UNKNOWNNAME;
    ids[0] = id;
    return count > 1 ? DISP_E_UNKNOWNNAME : S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result,
                                   EXCEPINFO* exception, UINT*) override;

 private:
  void goes() override { actWhen(kActsWhenItGoes); }
  void actWhen(Habit habit) {
    if ((habits_ & habit) != 0) page_.act();
  }
  Variant suitable(Suits suits);
  HRESULT raise(EXCEPINFO* exception);

  std::uint8_t habits_;
  std::uint8_t asked_ = 0;
  std::u16string_view typeName_;
};

HRESULT PageObject::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result,
                           EXCEPINFO* exception, UINT*) {
  const AllocationScope own(false);
  if (!page_.mayGoOn()) return E_FAIL;
  page_.act();
  if (habits_ != 0 && page_.in.oneIn((habits_ & kRaises) != 0 ? 2 : 16)) return raise(exception);
  Variant value;
  if (id == DISPID_NEWENUM && (habits_ & kStrict) == 0) {
    value.punkVal = new PageEnumerator(page_);
    value.vt = VT_UNKNOWN;
  } else if ((habits_ & kStrange) != 0) {
    value = anyValue(page_);
  } else {
    const bool isKnown = id >= 0 && static_cast<std::size_t>(id) < std::size(kMembers);
    value = suitable(isKnown ? kMembers[id].suits : Suits::Text);
  }
  if (result != nullptr) *result = value.release();
  return S_OK;
}

Variant PageObject::suitable(Suits suits) {
  Input& in = page_.in;
  switch (suits) {
    case Suits::Text:
      return anyText(page_);
    case Suits::Number:
      return std::int32_t{1 + in.byte() % 4};
    case Suits::Flag:
      return booleanOf(in.byte() % 2 != 0);
    case Suits::End:
      return booleanOf(++asked_ > 1 && in.byte() % 4 == 0);
    case Suits::Object:
      return pageObject(page_);
    case Suits::Array:
      return plainArray(page_);
    case Suits::Value:
      return anyValue(page_);
    case Suits::Path:
      return Variant(Sandbox::folder() + u"site");
  }
  return {};
}

HRESULT PageObject::raise(EXCEPINFO* exception) {
  const HRESULT code = anyFailure(page_);
  if (exception == nullptr || page_.in.byte() % 4 == 0) return code;
  *exception = {};
  if (page_.in.oneIn(8))
    exception->wCode = static_cast<WORD>(1001 + page_.in.byte());
  else
    exception->scode = code;
  exception->bstrSource = anyText(page_).release();
  exception->bstrDescription = anyText(page_).release();
  exception->bstrHelpFile = anyText(page_).release();
  if (page_.in.oneIn(8)) {
    exception->pfnDeferredFillIn = [](EXCEPINFO* info) {
      info->scode = E_FAIL;
      return S_OK;
    };
  }
  return DISP_E_EXCEPTION;
}

}  // namespace

Object pageObject(Page& page) {
  constexpr std::uint8_t kHabits[] = {0,       0,       0,       kActsWhenAsked, kActsWhenItGoes,
                                      kStrict, kRaises, kStrange};
  const std::uint8_t habits = page.in.oneIn(4) ? page.in.byte() : page.in.oneOf(kHabits);
  return Object::attach(new PageObject(page, habits, page.in.oneOf(kTypeNames)));
}

Object anyObject(Page& page) {
  const std::size_t kind = page.in.below(16);
  if (kind < 9) return pageObject(page);
  if (kind < 11) return libraryObject(page, page.in.byte());
  if (kind < 13) {
    const VARIANT& variable = page.variable(page.in.byte());
    return variable.vt == VT_DISPATCH ? Object(variable.pdispVal) : Object();
  }
  if (kind < 15) return Object::from(dictionary(page, 2));
  return {};
}

}  // namespace quendal::fuzz
