// One IDispatch::Invoke with arguments as a host hands them over.
#pragma once

#include <quendal/object.h>

#include <algorithm>
#include <string>
#include <vector>

#include "automation/dispatch.h"
#include "core/class_description.h"

namespace quendal::test {

/// What came back from a call: `error` holds number, source and description of an exception.
struct Outcome {
  HRESULT code = S_OK;
  Variant value;
  std::u16string error;
  UINT argumentError = 99;
};

inline std::vector<DISPID> idsOf(IDispatch* object, std::vector<std::u16string> names,
                                 HRESULT* code = nullptr) {
  std::vector<LPOLESTR> raw;
  for (std::u16string& name : names) raw.push_back(const_cast<LPOLESTR>(oleText(name.c_str())));
  std::vector<DISPID> ids(names.size());
  const HRESULT found =
      object->GetIDsOfNames(IID_NULL, raw.data(), static_cast<UINT>(raw.size()), 0, ids.data());
  if (code != nullptr) *code = found;
  return ids;
}

/// Calls with positional arguments in call order; `named` are added by parameter name.
inline Outcome rawCall(const Object& object, std::u16string_view name,
                       std::vector<VARIANT> arguments,
                       std::vector<std::pair<std::u16string, VARIANT>> named = {},
                       WORD flags = DISPATCH_METHOD) {
  std::vector<std::u16string> names = {std::u16string(name)};
  std::vector<VARIANT> all;
  for (auto& [parameter, value] : named) {
    names.push_back(parameter);
    all.push_back(value);
  }
  const std::vector<DISPID> ids = idsOf(object.dispatch(), names);
  std::vector<DISPID> namedIds(ids.begin() + 1, ids.end());
  if ((flags & DISPATCH_PROPERTYPUT) != 0) namedIds.push_back(DISPID_PROPERTYPUT);
  all.insert(all.end(), arguments.rbegin(), arguments.rend());
  DISPPARAMS params{all.data(), namedIds.data(), static_cast<UINT>(all.size()),
                    static_cast<UINT>(namedIds.size())};
  Outcome outcome;
  EXCEPINFO exception{};
  outcome.code = object.dispatch()->Invoke(ids[0], IID_NULL, 0, flags, &params, &outcome.value,
                                           &exception, &outcome.argumentError);
  const Text source = Text::attach(exception.bstrSource);
  const Text description = Text::attach(exception.bstrDescription);
  if (outcome.code == DISP_E_EXCEPTION)
    outcome.error = textOf(Variant(std::int32_t{exception.scode & 0xFFFF})) + u" " +
                    std::u16string(source) + u": " + std::u16string(description);
  return outcome;
}

/// A member's function as it stands in its class's table.
template <class Class, class Function>
Function* slotOf(std::u16string_view member) {
  const auto members = describe<Class>().members();
  return reinterpret_cast<Function*>(std::ranges::find(members, member, &MemberRow::name)->slot);
}

/// References to a host's variables, which must outlive them.
inline Variant typedReference(VARTYPE type, void* target) {
  Variant result;
  result.byref = target;
  result.vt = static_cast<VARTYPE>(VT_BYREF | type);
  return result;
}
inline Variant referenceTo(VARIANT& variable) { return typedReference(VT_VARIANT, &variable); }

}  // namespace quendal::test
