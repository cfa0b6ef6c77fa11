#include <quendal/text.h>

#include <cstdint>

#include "automation/posix/number_text.h"

namespace quendal::automation {
namespace {

Number integerNumber(std::int64_t value, int exponent = 0) noexcept {
  const auto bits = static_cast<std::uint64_t>(value);
  return {{.magnitude = value < 0 ? 0 - bits : bits, .exponent = exponent, .negative = value < 0}};
}

}  // namespace

std::optional<Number> numberOf(const VARIANT& value) noexcept {
  switch (value.vt) {
    case VT_EMPTY:
      return Number{};
    case VT_I1:
      return integerNumber(value.cVal);
    case VT_I2:
      return integerNumber(value.iVal);
    case VT_BOOL:
      return integerNumber(value.boolVal);
    case VT_I4:
    case VT_INT:
      return integerNumber(value.lVal);
    case VT_I8:
      return integerNumber(value.llVal);
    case VT_CY:
      return integerNumber(value.cyVal.int64, -kCurrencyDecimals);
    case VT_UI1:
      return integerNumber(value.bVal);
    case VT_UI2:
      return integerNumber(value.uiVal);
    case VT_UI4:
    case VT_UINT:
      return integerNumber(value.ulVal);
    case VT_UI8:
      return Number{{.magnitude = value.ullVal}};
    case VT_R4:
      return Number{{}, static_cast<double>(value.fltVal), kSingleDigits};
    case VT_R8:
    case VT_DATE:
      return Number{{}, value.dblVal, kRealDigits};
    case VT_DECIMAL:
      return Number{exactOf(value.decVal)};
    case VT_BSTR:
      if (const auto read = parseNumber(viewOf(value.bstrVal))) return Number{*read};
      return std::nullopt;
    default:
      return std::nullopt;
  }
}

std::optional<double> realOf(const Number& number) noexcept {
  if (number.realDigits != 0) return number.real;
  return toReal(number.exact);
}

}  // namespace quendal::automation
