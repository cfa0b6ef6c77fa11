// Values of types without a maker of their own, what they hold as text, and their conversions.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

#include "tests/arrays/page_arrays.h"
#include "tests/support/script_object.h"

namespace quendal::test {

template <class Field>
Variant make(VARTYPE type, Field VARIANT::*field, std::type_identity_t<Field> content) {
  VARIANT made{};
  made.*field = content;
  made.vt = type;
  return Variant::attach(made);
}

inline Variant i8(long long n) { return make(VT_I8, &VARIANT::llVal, n); }
inline Variant ui8(unsigned long long n) { return make(VT_UI8, &VARIANT::ullVal, n); }
inline Variant r4(float n) { return make(VT_R4, &VARIANT::fltVal, n); }
inline Variant cy(long long tenThousandths) { return make(VT_CY, &VARIANT::llVal, tenThousandths); }
inline Variant decimal(ULONG high, unsigned long long low, int scale, bool negative) {
  Variant made;
  made.decVal.Hi32 = high;
  made.decVal.Lo64 = low;
  made.decVal.scale = static_cast<BYTE>(scale);
  made.decVal.sign = negative ? 0x80 : 0;
  made.vt = VT_DECIMAL;
  return made;
}

/// The functions of some systems do not promise to leave their sources alone.
inline VARIANT* source(const VARIANT& value) { return const_cast<VARIANT*>(&value); }

/// How many references to an object there are.
inline ULONG referencesOf(const Object& object) {
  object.dispatch()->AddRef();
  return object.dispatch()->Release();
}

/// A scalar as text, independent of the conversions under test.
inline std::string show(const VARIANT& value) {
  if (value.vt == VT_EMPTY) return "Empty";
  if (value.vt == VT_NULL) return "Null";
  if (value.vt == VT_UI1) return std::to_string(value.bVal);
  if (value.vt == VT_I2 || value.vt == VT_BOOL) return std::to_string(value.iVal);
  if (value.vt == VT_I4) return std::to_string(value.lVal);
  if (value.vt == VT_I8 || value.vt == VT_CY) return std::to_string(value.llVal);
  if (value.vt == VT_UI8) return std::to_string(value.ullVal);
  if (value.vt == VT_BSTR) return toUtf8(viewOf(value.bstrVal));
  if (value.vt == VT_DECIMAL)
    return (value.decVal.sign != 0 ? "-" : "") + std::to_string(value.decVal.Lo64) + "/" +
           std::to_string(value.decVal.scale);
  char buffer[64];
  std::snprintf(buffer, sizeof(buffer), "%.17g", value.dblVal);
  return buffer;
}

/// The converted value as text, or why there is none.
inline std::string convert(const VARIANT& value, VARTYPE type, USHORT flags = 0) {
  Variant target;
  const HRESULT result = VariantChangeTypeEx(&target, source(value), 0x0409, flags, type);
  if (result == DISP_E_TYPEMISMATCH) return "type mismatch";
  if (result == DISP_E_OVERFLOW) return "overflow";
  if (result == DISP_E_BADVARTYPE) return "bad type";
  if (result == E_INVALIDARG) return "invalid";
  EXPECT_EQ(result, S_OK);
  EXPECT_EQ(target.vt, type);
  return show(target);
}

inline void expectConversions(const std::vector<std::tuple<Variant, VARTYPE, const char*>>& rows) {
  for (const auto& [value, type, expected] : rows)
    EXPECT_EQ(convert(value, type), expected) << show(value) << " (" << value.vt << ") to " << type;
}

}  // namespace quendal::test
