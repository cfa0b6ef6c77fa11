#include <cstdint>

#include "boundary/arguments.h"

#include "base/text.h"
#include "boundary/page_object.h"
#include "boundary/values.h"

namespace quendal::fuzz {

Arguments::~Arguments() {
  for (SAFEARRAY* array : locked_) SafeArrayUnaccessData(array);
}

Variant Arguments::suitable(Page& page, const ParameterRow& parameter) {
  const std::u16string_view name = parameter.name;
  const auto isCalled = [&](std::u16string_view part) { return containsNoCase(name, part); };
  switch (parameter.type.type) {
    case InterfaceType::Int16:
    case InterfaceType::Int32:
    case InterfaceType::Enumeration:
      if (isCalled(u"Level") || isCalled(u"Repeat") || page.in.byte() % 2 == 0)
        return std::int32_t{1 + page.in.byte() % 3};
      return anyInt(page);
    case InterfaceType::Boolean:
      return valueOf(page, VT_BOOL);
    case InterfaceType::String:
      return anyText(page);
    case InterfaceType::Dispatch:
    case InterfaceType::Class:
      return isCalled(u"Dictionary") && page.in.byte() % 2 == 0 ? dictionary(page)
                                                                : Variant(anyObject(page));
    default:
      break;
  }
  if (isCalled(u"Arr")) return plainArray(page);
  if (isCalled(u"Dict")) return dictionary(page);
  if (isCalled(u"Date")) return valueOf(page, VT_DATE);
  if (name.starts_with(u"i") || isCalled(u"IN_i") || isCalled(u"IN_l")) return anyInt(page);
  return page.in.byte() % 2 == 0 ? Variant(anyText(page)) : anyValue(page);
}

VARIANT Arguments::reference(VARIANT& target, VARTYPE type) {
  VARIANT result;
  VariantInit(&result);
  result.vt = static_cast<VARTYPE>(VT_BYREF | type);
  if (type == VT_VARIANT)
    result.pvarVal = &target;
  else
    result.byref = type == VT_DECIMAL ? static_cast<void*>(&target.decVal) : &target.llVal;
  return result;
}

// An array stays as it is while one of its elements is an argument.
VARIANT Arguments::element() {
  const std::size_t position = page_.in.byte();
  VARIANT& variable = page_.variable(page_.in.byte());
  void* data = nullptr;
  if (variable.vt != kVariantArray || variable.parray == nullptr)
    return reference(variable, VT_VARIANT);
  const std::size_t count = elementCount(*variable.parray);
  if (count == 0 || FAILED(SafeArrayAccessData(variable.parray, &data)))
    return reference(variable, VT_VARIANT);
  locked_.push_back(variable.parray);
  return reference(static_cast<VARIANT*>(data)[position % count], VT_VARIANT);
}

VARIANT Arguments::late(const ParameterRow* parameter) {
  Input& in = page_.in;
  const auto value = [&] {
    return parameter == nullptr ? anyValue(page_) : suitable(page_, *parameter);
  };
  switch (in.below(12)) {
    case 0:
    case 1:
    case 2:
      return own(value());
    case 3:
      return own(anyValue(page_));
    case 4:
    case 5:
    case 6: {
      VARIANT& variable = page_.variable(in.byte());
      Page::store(variable, value());
      return reference(variable, VT_VARIANT);
    }
    case 7:
      return reference(page_.variable(in.byte()), VT_VARIANT);
    case 8: {
      VARIANT& variable = page_.typed(in.byte());
      return reference(variable, variable.vt);
    }
    case 9:
      return element();
    case 10:
      return in.byte() % 2 == 0 ? own(Variant::missing()) : own(value());
    default:
      return page_.link(in.byte());
  }
}

}  // namespace quendal::fuzz
