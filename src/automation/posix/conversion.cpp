// VariantChangeTypeEx. A source is read as an exact decimal number or as a double, and the target
// written from that.
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <type_traits>

#include "automation/date_text.h"
#include "automation/posix/date_text.h"
#include "automation/posix/number_text.h"
#include "automation/posix/strings.h"
#include "automation/posix/variants.h"
#include "automation/reference.h"
#include "base/text.h"

namespace quendal::automation {
namespace {

constexpr USHORT kLocalBool = 16;    // VARIANT_LOCALBOOL: here the same as VARIANT_ALPHABOOL
constexpr int kDeepestDefault = 32;  // objects whose default value is an object, and so on

// Rounded half to even. Nothing when the type has no such number.
template <class Integer>
std::optional<Integer> integerOf(const Number& number) noexcept {
  using Limits = std::numeric_limits<Integer>;
  if (!number.isExact()) {
    const double rounded = std::nearbyint(number.real);
    const double beyond = std::ldexp(1.0, Limits::digits);
    const double least = Limits::is_signed ? -beyond : 0.0;
    if (!(rounded >= least && rounded < beyond)) return std::nullopt;
    return static_cast<Integer>(rounded);
  }
  const auto magnitude = roundTo(number.exact, 0);
  if (!magnitude) return std::nullopt;
  if (number.exact.isBits) {
    if (*magnitude > std::numeric_limits<std::make_unsigned_t<Integer>>::max()) return std::nullopt;
    return static_cast<Integer>(*magnitude);
  }
  const auto most = static_cast<UInt128>(Limits::max());
  if (!number.exact.negative || *magnitude == 0) {
    if (*magnitude > most) return std::nullopt;
    return static_cast<Integer>(*magnitude);
  }
  if (!Limits::is_signed || *magnitude > most + 1) return std::nullopt;
  return static_cast<Integer>(0 - *magnitude);
}

std::optional<std::int64_t> currencyOf(const Number& number) noexcept {
  if (number.isExact()) {
    ExactNumber scaled = number.exact;
    scaled.exponent += kCurrencyDecimals;
    scaled.isBits = false;
    return integerOf<std::int64_t>(Number{scaled, 0, 0});
  }
  const long double scaled = std::nearbyint(static_cast<long double>(number.real) * 10000.0L);
  const long double beyond = std::ldexp(1.0L, 63);
  if (!(scaled >= -beyond && scaled < beyond)) return std::nullopt;
  return static_cast<std::int64_t>(scaled);
}

std::optional<DECIMAL> decimalOf(const Number& number) noexcept {
  if (number.isExact()) return toDecimal(number.exact);
  const auto digits = parseNumber(realText(number.real, number.realDigits).view());
  return digits ? toDecimal(*digits) : std::nullopt;
}

// Writes a number of some type, or tells that the type has no such number.
template <class Field, class Value>
HRESULT store(Field& field, const std::optional<Value>& value) noexcept {
  if (!value) return DISP_E_OVERFLOW;
  field = *value;
  return S_OK;
}

template <class Integer>
HRESULT storeInteger(Integer& field, const VARIANT& source, const Number& number) noexcept {
  if (source.vt == VT_BOOL) {  // True has all bits set in every type
    field = static_cast<Integer>(source.boolVal);
    return S_OK;
  }
  return store(field, integerOf<Integer>(number));
}

HRESULT storeSingle(float& field, const Number& number) noexcept {
  const auto real = realOf(number);
  if (!real || std::fabs(*real) > static_cast<double>(std::numeric_limits<float>::max())) {
    return DISP_E_OVERFLOW;
  }
  field = static_cast<float>(*real);
  return S_OK;
}

HRESULT storeDate(DATE& field, const Number& number) noexcept {
  const auto real = realOf(number);
  if (!real || !isDate(*real)) return DISP_E_OVERFLOW;
  field = *real;
  return S_OK;
}

HRESULT toNumber(const VARIANT& source, VARTYPE type, VARIANT& result) noexcept {
  const auto number = numberOf(source);
  if (!number) return DISP_E_TYPEMISMATCH;
  switch (type) {
    case VT_I1:
      return storeInteger(result.cVal, source, *number);
    case VT_UI1:
      return storeInteger(result.bVal, source, *number);
    case VT_I2:
      return storeInteger(result.iVal, source, *number);
    case VT_UI2:
      return storeInteger(result.uiVal, source, *number);
    case VT_I4:
    case VT_INT:
      return storeInteger(result.lVal, source, *number);
    case VT_UI4:
    case VT_UINT:
      return storeInteger(result.ulVal, source, *number);
    case VT_I8:
      return storeInteger(result.llVal, source, *number);
    case VT_UI8:
      return storeInteger(result.ullVal, source, *number);
    case VT_R4:
      return storeSingle(result.fltVal, *number);
    case VT_R8:
      return store(result.dblVal, realOf(*number));
    case VT_CY:
      return store(result.cyVal.int64, currencyOf(*number));
    case VT_DATE:
      return storeDate(result.date, *number);
    case VT_DECIMAL:
      return store(result.decVal, decimalOf(*number));
    case VT_BOOL: {
      const bool isTrue = !number->isExact() ? number->real != 0 : number->exact.magnitude != 0;
      result.boolVal = isTrue ? VARIANT_TRUE : VARIANT_FALSE;
      return S_OK;
    }
    default:
      return DISP_E_TYPEMISMATCH;
  }
}

HRESULT storeText(VARIANT& result, std::u16string_view text) noexcept {
  result.bstrVal = newText(text);
  return result.bstrVal == nullptr ? E_OUTOFMEMORY : S_OK;
}

HRESULT toText(const VARIANT& source, USHORT flags, VARIANT& result) {
  switch (source.vt) {
    case VT_EMPTY:
      return storeText(result, {});
    case VT_BOOL:
      if ((flags & (VARIANT_ALPHABOOL | kLocalBool)) != 0) {
        return storeText(result, source.boolVal != 0 ? u"True" : u"False");
      }
      break;
    case VT_DATE: {
      const auto moment = momentOf(source.date);
      return moment ? storeText(result, dateText(*moment)) : E_INVALIDARG;
    }
    default:
      break;
  }
  const auto number = numberOf(source);
  return number ? storeText(result, textOf(*number).view()) : DISP_E_TYPEMISMATCH;
}

HRESULT textToBool(const VARIANT& source, VARIANT& result) noexcept {
  const std::u16string_view text = viewOf(source.bstrVal);
  const bool isTrue = equalNoCase(text, u"true") || equalNoCase(text, u"#true#");
  if (!isTrue && !equalNoCase(text, u"false") && !equalNoCase(text, u"#false#")) {
    return toNumber(source, VT_BOOL, result);
  }
  result.boolVal = isTrue ? VARIANT_TRUE : VARIANT_FALSE;
  return S_OK;
}

HRESULT textToDate(const VARIANT& source, VARIANT& result) {
  if (parseDate(viewOf(source.bstrVal), result.date)) return S_OK;
  return toNumber(source, VT_DATE, result);
}

HRESULT toObject(const VARIANT& source, VARTYPE type, VARIANT& result) noexcept {
  result.punkVal = nullptr;
  if (source.punkVal == nullptr) return S_OK;
  void* object = nullptr;
  const IID& iid = type == VT_DISPATCH ? IID_IDispatch : IID_IUnknown;
  if (FAILED(source.punkVal->QueryInterface(iid, &object))) return DISP_E_TYPEMISMATCH;
  if (type == VT_DISPATCH) {
    result.pdispVal = static_cast<IDispatch*>(object);
  } else {
    result.punkVal = static_cast<IUnknown*>(object);
  }
  return S_OK;
}

// Replaces an object by its default value, and that by its own while it is an object.
HRESULT takeDefaultValue(OwnedValue& held, VARIANT& value) noexcept {
  for (int depth = 0; value.vt == VT_DISPATCH; ++depth) {
    if (value.pdispVal == nullptr) return DISP_E_BADVARTYPE;
    if (depth == kDeepestDefault) return DISP_E_TYPEMISMATCH;
    value.pdispVal->AddRef();
    const Reference<IDispatch> object(value.pdispVal);
    DISPPARAMS none{};
    VARIANT result{};
    HRESULT status = object->Invoke(DISPID_VALUE, IID_NULL, 0, DISPATCH_PROPERTYGET, &none, &result,
                                    nullptr, nullptr);
    if (FAILED(status)) return status;
    status = replaceValue(held, result);
    if (SUCCEEDED(status)) status = borrowValue(held, value);
    if (FAILED(status)) return status;
  }
  return S_OK;
}

bool isObject(VARTYPE type) noexcept { return type == VT_DISPATCH || type == VT_UNKNOWN; }

// Converts a value that is not of the type yet.
HRESULT convert(const VARIANT& value, USHORT flags, VARTYPE type, VARIANT& result) {
  if (((value.vt | type) & VT_ARRAY) != 0) return DISP_E_TYPEMISMATCH;
  if (value.vt == VT_ERROR || type == VT_ERROR) return DISP_E_TYPEMISMATCH;
  if (value.vt == VT_DECIMAL && !isDecimal(value.decVal)) return E_INVALIDARG;
  if (type == VT_NULL) return S_OK;
  if (value.vt == VT_NULL) return DISP_E_TYPEMISMATCH;
  if (type == VT_EMPTY) return S_OK;
  if (isObject(type)) {
    return isObject(value.vt) ? toObject(value, type, result) : DISP_E_TYPEMISMATCH;
  }
  if (type == VT_BSTR) return toText(value, flags, result);
  if (value.vt == VT_BSTR && type == VT_BOOL) return textToBool(value, result);
  if (value.vt == VT_BSTR && type == VT_DATE) return textToDate(value, result);
  return toNumber(value, type, result);
}

}  // namespace
}  // namespace quendal::automation

using namespace quendal::automation;

HRESULT VariantChangeTypeEx(VARIANTARG* target, const VARIANTARG* source, LCID, USHORT flags,
                            VARTYPE type) noexcept {
  if (target == nullptr || source == nullptr) return E_INVALIDARG;
  if ((type & VT_BYREF) != 0) return DISP_E_TYPEMISMATCH;
  if (!isValueType(type)) return type == VT_VARIANT ? DISP_E_TYPEMISMATCH : DISP_E_BADVARTYPE;
  if (target == source && source->vt == type) return S_OK;

  VARIANT value;
  HRESULT status = borrowValue(*source, value);
  if (FAILED(status)) return status;
  OwnedValue held;
  const bool needsValue = value.vt == VT_DISPATCH && !isObject(type) && type != VT_EMPTY &&
                          type != VT_NULL && type != VT_ERROR && (type & VT_ARRAY) == 0;
  if (needsValue) {
    if ((flags & VARIANT_NOVALUEPROP) != 0) return DISP_E_TYPEMISMATCH;
    status = takeDefaultValue(held, value);
    if (FAILED(status)) return status;
  }

  VARIANT result{};
  if (value.vt == type) {
    status = copyInto(result, value);
  } else {
    status = guarded([&] { return convert(value, flags, type, result); });
    if (SUCCEEDED(status)) result.vt = type;  // last: a decimal lies over the tag
  }
  return FAILED(status) ? status : replaceValue(*target, result);
}
