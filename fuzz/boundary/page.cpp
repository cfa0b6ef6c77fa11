#include "boundary/page.h"

#include <cstdio>
#include <cstdlib>

#include "boundary/member_call.h"
#include "boundary/values.h"
#include "core/apartment.h"
#include "core/dictionary.h"

namespace quendal::fuzz {
namespace {

constexpr VARTYPE kTypes[] = {
    VT_I2,
    VT_I4,
    VT_R4,
    VT_R8,
    VT_CY,
    VT_DATE,
    VT_BSTR,
    VT_BOOL,
    VT_UNKNOWN,
    VT_DISPATCH,
    VT_ERROR,
    VT_DECIMAL,
    VT_UI1,
    VT_I8,
    VT_UI4,
    VT_ARRAY | VT_VARIANT,
    VT_ARRAY | VT_I4,
    VT_ARRAY | VT_BSTR,
};

bool holdsArray(const VARIANT& value) noexcept {
  return (value.vt & VT_ARRAY) != 0 && (value.vt & VT_BYREF) == 0 && value.parray != nullptr;
}

VARIANT plainReference(VARIANT& target) noexcept {
  VARIANT reference;
  VariantInit(&reference);
  reference.vt = kVariantReference;
  reference.pvarVal = &target;
  return reference;
}

}  // namespace

Page::Page(Input& input) : in(input) {
  links_[0] = plainReference(variables_[0]);
  links_[1] = plainReference(links_[0]);
  links_[2] = plainReference(variables_[1]);
  for (const VARTYPE type : kTypes) {
    typed_.emplace_back();
    typed_.back().llVal = 0;
    typed_.back().vt = type;
  }
}

Page::~Page() {
  unlockAll();
  // Twice: what an object does as it goes may fill a variable again, until it may do no more.
  for (int round = 0; round < 2; ++round) {
    for (Variant& variable : variables_) clear(variable);
    for (Variant& variable : typed_) {
      const VARTYPE type = variable.vt;
      Variant old = Variant::attach(variable);
      variable.llVal = 0;
      variable.vt = type;
    }
    for (const Object& dictionary : std::exchange(cyclic_, {}))
      Dictionary::from(dictionary)->removeAll();
    if (Apartment* const own = apartmentIfAny()) {
      own->groupDepth = 0;
      own->errorNumber = 0;
      const PageObjects ended = std::exchange(own->page, {});
    }
    SetErrorInfo(0, nullptr);
    unlockAll();
    if (round == 0) budget_ = 0;
  }
  if (objects_ == 0) return;
  std::fprintf(stderr, "%d page objects are still held\n", objects_);
  std::abort();
}

VARIANT& Page::typedAs(VARTYPE type) noexcept {
  for (Variant& variable : typed_)
    if (variable.vt == type) return variable;
  std::abort();
}

void Page::store(VARIANT& variable, Variant value) {
  if ((value.vt & VT_BYREF) != 0) {
    Variant plain;
    VariantCopyInd(&plain, &value);  // Empty when the reference leads nowhere
    value = std::move(plain);
  }
  VARIANT old = variable;
  variable = value.release();
  if (SUCCEEDED(VariantClear(&old))) return;
  value = Variant::attach(variable);
  variable = old;
}

void Page::act() {
  if (!mayGoOn()) return;
  --budget_;
  for (std::size_t count = in.below(4); count > 0; --count) actOnce();
}

void Page::actOnce() {
  switch (in.below(14)) {
    case 0:
      return store(variable(in.byte()), anyValue(*this));
    case 1:
      return clear(variable(in.byte()));
    case 2:
      return erase(variable(in.byte()));
    case 3:
      return redim(variable(in.byte()));
    case 4:
    case 5:
      return replaceElement(variable(in.byte()));
    case 6:
      return lock(variable(in.byte()));
    case 7:
      return changeDictionary(variable(in.byte()));
    case 8:
      return letGoOf(variable(in.byte()));
    case 9:
      return changeTyped(typed(in.byte()));
    case 10:
      for (Variant& variable : variables_) clear(variable);
      return;
    default:
      return callAnything(*this);
  }
}

// As Erase does: refused while the array is locked.
void Page::erase(VARIANT& variable) {
  if (!holdsArray(variable) || variable.parray->cLocks > 0) return;
  SAFEARRAY* const array = std::exchange(variable.parray, nullptr);
  SafeArrayDestroy(array);
}

void Page::redim(VARIANT& variable) {
  if (!holdsArray(variable)) return;
  SAFEARRAYBOUND bound{in.byte() % 9U, variable.parray->rgsabound[0].lLbound};
  SafeArrayRedim(variable.parray, &bound);
}

// Elements may be replaced while an array is locked.
void Page::replaceElement(VARIANT& variable) {
  Variant value = anyValue(*this);  // page code may run while it is made
  Text text = anyText(*this);
  const std::size_t position = in.number<std::uint16_t>();
  if (!holdsArray(variable)) return;
  const SAFEARRAY& array = *variable.parray;
  const std::size_t count = elementCount(array);
  if (count == 0) return;
  const std::size_t i = position % count;
  if ((array.fFeatures & FADF_VARIANT) != 0)
    store(static_cast<VARIANT*>(array.pvData)[i], std::move(value));
  if ((array.fFeatures & FADF_BSTR) != 0)
    SysFreeString(std::exchange(static_cast<BSTR*>(array.pvData)[i], text.release()));
}

void Page::lock(VARIANT& variable) {
  void* data = nullptr;
  if (in.byte() % 2 == 0) return unlockAll();
  if (holdsArray(variable) && SUCCEEDED(SafeArrayAccessData(variable.parray, &data)))
    locked_.push_back(variable.parray);
}

void Page::unlockAll() {
  for (SAFEARRAY* array : std::exchange(locked_, {})) SafeArrayUnaccessData(array);
}

void Page::changeDictionary(VARIANT& variable) {
  if (variable.vt != VT_DISPATCH || variable.pdispVal == nullptr) return;
  const auto dictionary = Dictionary::from(Object(variable.pdispVal));
  if (!dictionary) return;
  try {
    switch (in.below(5)) {
      case 0:
        return dictionary->removeAll();
      case 1:
        return dictionary->remove(Variant(std::int32_t{in.byte()}));
      case 2:
        return dictionary->set(Variant(std::int32_t{in.byte()}), freshValue(*this));
      case 3:
        return dictionary->add(freshValue(*this), freshValue(*this));
      default:
        willEmpty(dictionary->object());
        return dictionary->set(Variant(u"itself"), Variant(dictionary->object()));
    }
  } catch (const AutomationError&) {  // as a page that goes on
  }
}

// Clears every variable that holds the same object.
void Page::letGoOf(VARIANT& variable) {
  if (variable.vt != VT_DISPATCH && variable.vt != VT_UNKNOWN) return;
  const IUnknown* const object = variable.punkVal;
  for (Variant& other : variables_)
    if ((other.vt == VT_DISPATCH || other.vt == VT_UNKNOWN) && other.punkVal == object)
      clear(other);
}

void Page::changeTyped(VARIANT& variable) {
  const VARTYPE type = variable.vt;
  Variant value = valueOf(*this, type);
  if (holdsArray(variable) && variable.parray->cLocks > 0) return;
  const Variant old = Variant::attach(variable);
  variable = value.release();
  variable.vt = type;
}

}  // namespace quendal::fuzz
