// Values of types without a maker of their own, arrays as hosts hold and pass them, what both hold
// as text, and conversions.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

#include "core/variant_ref.h"
#include "tests/core/raw_call.h"
#include "tests/support/outcome.h"
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

/// An array of one-letter texts; an unallocated one for null.
inline Variant of(const char16_t* elements, VARTYPE type = VT_VARIANT, LONG lowerBound = 0) {
  if (elements == nullptr) return Variant::array(nullptr, type);
  std::vector<Variant> values;
  for (; *elements != 0; ++elements) values.emplace_back(std::u16string_view(elements, 1));
  return arrayOf(values, type, lowerBound);
}

inline Variant twoDimensions() {
  SAFEARRAYBOUND bounds[] = {{1, 0}, {2, 0}};
  return Variant::array(SafeArrayCreate(VT_VARIANT, 2, bounds));
}

/// "abc", "?" for an object, "[...]" for arrays, "none" for an unallocated array, "~" for Empty;
/// a lower bound other than 0 stands before the elements.
inline std::string shownArray(const VARIANT& value) {
  const VARIANT plain = follow(value);
  if (plain.vt == VT_EMPTY) return "~";
  if (plain.vt == VT_NULL) return "Null";
  if (plain.vt == VT_DISPATCH || plain.vt == VT_UNKNOWN) return plain.punkVal ? "?" : "Nothing";
  if ((plain.vt & VT_ARRAY) == 0) return toUtf8(textOf(plain));
  if (plain.parray == nullptr) return "none";
  const LONG lower = plain.parray->rgsabound[0].lLbound;
  std::string text = lower == 0 ? "[" : std::to_string(lower) + "[";
  const ArrayView view(plain);
  for (std::size_t i = 0; i < view.size(); ++i) text += (i > 0 ? " " : "") + shownArray(view.at(i));
  return text + "]";
}

/// A page's variable that holds an array, and the argument that a call of it gets: a reference to
/// the variable or, `typed`, to the place of the array itself; or a reference to such a one.
struct PageVariable {
  explicit PageVariable(Variant value, bool typed = false, bool twice = false)
      : variable(std::move(value)),
        inner(typed ? typedReference(variable.vt, &variable.parray) : referenceTo(variable)),
        outer(twice ? referenceTo(inner) : inner),
        reference(outer) {}
  [[nodiscard]] const VARIANT& argument() const noexcept { return outer; }

  Variant variable;
  VARIANT inner, outer;
  VariantRef reference;
};

/// Each way in which a host passes a variable.
inline constexpr struct {
  bool typed, twice;
} kWays[] = {{false, false}, {true, false}, {false, true}, {true, true}};

}  // namespace quendal::test
