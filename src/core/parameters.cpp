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

TextArgument::TextArgument(CallFrame& frame, std::size_t i) {
  const VARIANT* argument = frame.argument(i);
  if (argument == nullptr) {
    const auto* text = std::get_if<std::u16string_view>(&frame.parameter(i).defaultValue);
    if (text != nullptr) view_ = *text;
    return;
  }
  const VARIANT value = follow(*argument);
  if (value.vt == VT_BSTR) {
    view_ = viewOf(value.bstrVal);
    return;
  }
  converted_ = frame.plainArgument(i, VT_BSTR);
  view_ = viewOf(converted_.bstrVal);
}

Parameter<const Object&>::FromCall::FromCall(CallFrame& frame, std::size_t i) {
  const VARIANT* argument = frame.argument(i);
  if (argument == nullptr) return;
  try {
    object_ = Object::from(*argument);
  } catch (const AutomationError&) {
    throw ArgumentError{DISP_E_TYPEMISMATCH, argument};
  }
}

Parameter<ArgumentList>::FromTable::FromTable(SAFEARRAY* const* array) {
  if (array == nullptr || *array == nullptr) return;
  if (((*array)->fFeatures & FADF_VARIANT) == 0 || (*array)->cDims != 1)
    throw AutomationError(error_number::kTypeMismatch);
  void* data = nullptr;
  check(SafeArrayAccessData(*array, &data));
  array_ = *array;
  list_ = {static_cast<const VARIANT*>(data), array_->rgsabound[0].cElements};
}

Parameter<ArgumentList>::FromTable::~FromTable() {
  if (array_ != nullptr) SafeArrayUnaccessData(array_);
}

}  // namespace quendal
