#include "core/parameters.h"

#include <cstdint>

namespace quendal {

Variant CallFrame::plainArgument(std::size_t i, VARTYPE type) const {
  const VARIANT* argument = arguments_[i];
  if (argument == nullptr) {
    const ParameterDefault& fallback = row_.parameterRows[i].defaultValue;
    if (const auto* text = std::get_if<std::u16string_view>(&fallback)) return Variant(*text);
    if (type == VT_BSTR) return Variant(u"");
    const auto* number = std::get_if<std::int32_t>(&fallback);
    return converted(Variant(number == nullptr ? 0 : *number), type);
  }
  const VARIANT value = follow(*argument);
  if (value.vt == type) return Variant::copyOf(value);
  try {
    return converted(value, type);
  } catch (const AutomationError& error) {
    const bool isOverflow = error.number() == error_number::kOverflow;
    throw ArgumentError{isOverflow ? DISP_E_OVERFLOW : DISP_E_TYPEMISMATCH, argument};
  }
}

Parameter<const VARIANT&>::Value::Value(const VARIANT& value) : value_(&value) {
  if ((value.vt & VT_BYREF) == 0) return;
  copy_ = Variant::copyOf(value);
  value_ = &copy_;
}

Variant Parameter<const VARIANT&>::fromCall(const CallFrame& frame, std::size_t i) {
  const VARIANT* argument = frame.argument(i);
  return argument == nullptr ? Variant::missing() : Variant::copyOf(*argument);
}

Object Parameter<const Object&>::fromCall(const CallFrame& frame, std::size_t i) {
  const VARIANT* argument = frame.argument(i);
  if (argument == nullptr) return {};
  try {
    return Object::from(*argument);
  } catch (const AutomationError&) {
    throw ArgumentError{DISP_E_TYPEMISMATCH, argument};
  }
}

Parameter<ArgumentList>::Locked::Locked(SAFEARRAY* array) : array_(array) {
  if (array == nullptr) return;
  if ((array->fFeatures & FADF_VARIANT) == 0 || array->cDims != 1)
    throw AutomationError(error_number::kTypeMismatch);
  void* data = nullptr;
  check(SafeArrayAccessData(array, &data));
  list_ = {static_cast<const VARIANT*>(data), array->rgsabound[0].cElements};
}

Parameter<ArgumentList>::Locked::~Locked() {
  if (array_ != nullptr) SafeArrayUnaccessData(array_);
}

}  // namespace quendal
