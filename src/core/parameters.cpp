#include "core/parameters.h"

namespace quendal {

Variant CallFrame::plainArgument(std::size_t i, VARTYPE type) const {
  const VARIANT* argument = arguments_[i];
  if (argument == nullptr) {
    const ParameterDefault& fallback = row_.parameterRows[i].defaultValue;
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

const Text& CallFrame::textArgument(std::size_t i, Text& own) const {
  const VARIANT* argument = arguments_[i];
  if (argument == nullptr) {
    const auto* text = std::get_if<std::u16string_view>(&row_.parameterRows[i].defaultValue);
    if (text != nullptr) own = Text(*text);
    return own;
  }
  own = Text::attach(plainArgument(i, VT_BSTR).release().bstrVal);
  return own;
}

Parameter<const VARIANT&>::Argument::Argument(const VARIANT& value) : value_(&value) {
  if ((value.vt & VT_BYREF) == 0) return;
  own_ = Variant::copyOf(value);
  value_ = &own_;
}

Parameter<const VARIANT&>::Argument::Argument(CallFrame& frame, std::size_t i) : value_(&own_) {
  const VARIANT* argument = frame.argument(i);
  own_ = argument == nullptr ? Variant::missing() : Variant::copyOf(*argument);
}

Parameter<const Object&>::Argument::Argument(CallFrame& frame, std::size_t i) {
  const VARIANT* argument = frame.argument(i);
  if (argument == nullptr) return;
  try {
    object_ = Object::from(*argument);
  } catch (const AutomationError&) {
    throw ArgumentError{DISP_E_TYPEMISMATCH, argument};
  }
}

Parameter<ArgumentList>::Argument::Argument(SAFEARRAY* const* array) {
  if (array == nullptr || *array == nullptr) return;
  if (((*array)->fFeatures & FADF_VARIANT) == 0 || (*array)->cDims != 1)
    throw AutomationError(error_number::kTypeMismatch);
  void* data = nullptr;
  check(SafeArrayAccessData(*array, &data));
  array_ = *array;
  list_ = {static_cast<const VARIANT*>(data), array_->rgsabound[0].cElements};
}

Parameter<ArgumentList>::Argument::~Argument() {
  if (array_ != nullptr) SafeArrayUnaccessData(array_);
}

}  // namespace quendal
