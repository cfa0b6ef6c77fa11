#include "core/compare.h"

#include <quendal/object.h>

#include <limits>

namespace quendal {
namespace {

constexpr double kCurrencyUnits = 10000.0;

NumberKey exactly(double value) noexcept { return {value, 0}; }

// A 64-bit integer counted in parts of `unit`. Integers of one nearest double keep their order.
template <class Integer>
NumberKey nearest(Integer integer, double unit = 1.0) noexcept {
  // Stored, as on x86 the conversion leaves more bits than a double has.
  const volatile double rounded = static_cast<double>(integer);
  const double value = rounded / unit;
  const double whole = value * unit;
  // The largest integers round to a double that is one more than the type holds.
  constexpr Integer kLargest = std::numeric_limits<Integer>::max();
  const bool isBeyond = whole >= static_cast<double>(kLargest);
  const Integer back = isBeyond ? kLargest : static_cast<Integer>(whole);
  const auto fine = static_cast<std::int64_t>(integer - back) - (isBeyond ? 1 : 0);
  return {value, static_cast<std::int32_t>(fine)};
}

// The order of a number, text or Empty: numbers come before texts.
struct Plain {
  explicit Plain(const VARIANT& value) {
    if (value.vt == VT_EMPTY) {
      isEmpty = true;
    } else if (value.vt == VT_BSTR) {
      text = viewOf(value.bstrVal);
    } else {
      const std::optional<NumberKey> found = numberOf(value);
      if (!found) throw AutomationError(error_number::kTypeMismatch);
      number = *found;
      isNumber = true;
    }
  }

  bool isEmpty = false;
  bool isNumber = false;
  NumberKey number{};
  std::u16string_view text;
};

std::partial_ordering comparePlain(const VARIANT& left, const VARIANT& right) {
  if (left.vt == VT_NULL || right.vt == VT_NULL) return std::partial_ordering::unordered;
  const Plain a(left);
  const Plain b(right);
  // Empty is whichever of 0 and "" its zero members make it beside the other one.
  if (a.isEmpty || b.isEmpty) {
    return a.isNumber || b.isNumber ? a.number <=> b.number : a.text <=> b.text;
  }
  if (a.isNumber && b.isNumber) return a.number <=> b.number;
  if (a.isNumber != b.isNumber) {
    return a.isNumber ? std::partial_ordering::less : std::partial_ordering::greater;
  }
  return a.text <=> b.text;
}

}  // namespace

std::optional<NumberKey> numberOf(const VARIANT& value) {
  switch (value.vt) {
    case VT_I1:
      return exactly(static_cast<signed char>(value.cVal));
    case VT_UI1:
      return exactly(value.bVal);
    case VT_I2:
      return exactly(value.iVal);
    case VT_BOOL:
      return exactly(value.boolVal);
    case VT_UI2:
      return exactly(value.uiVal);
    case VT_I4:
    case VT_INT:
      return exactly(value.lVal);
    case VT_UI4:
    case VT_UINT:
      return exactly(value.ulVal);
    case VT_R4:
      return exactly(static_cast<double>(value.fltVal));
    case VT_R8:
      return exactly(value.dblVal);
    case VT_DATE:
      return exactly(value.date);
    case VT_I8:
      return nearest(value.llVal);
    case VT_UI8:
      return nearest(value.ullVal);
    case VT_CY:
      return nearest(value.llVal, kCurrencyUnits);
    case VT_DECIMAL:
      return exactly(converted(value, VT_R8).dblVal);
    default:
      return std::nullopt;
  }
}

Variant plainValueOf(const VARIANT& value) {
  const VARIANT plain = follow(value);
  if (!isObject(plain)) return Variant::copyOf(plain);
  Variant result = Object::from(plain).defaultValue();
  if (isObject(result)) throw AutomationError(error_number::kNoSuchMember);
  return result;
}

std::partial_ordering compareValues(const VARIANT& a, const VARIANT& b) {
  const VARIANT left = follow(a);
  const VARIANT right = follow(b);
  // Before any object is asked: what is compared with Null does not matter.
  if (left.vt == VT_NULL || right.vt == VT_NULL) return std::partial_ordering::unordered;
  if (!isObject(left) && !isObject(right)) return comparePlain(left, right);
  const Variant plainLeft = plainValueOf(left);
  const Variant plainRight = plainValueOf(right);
  return comparePlain(plainLeft, plainRight);
}

}  // namespace quendal
