// Values for tests of the automation runtime, through its own functions alone, so that the same
// tests hold for the system's.
#pragma once

#include <quendal/automation.h>

#include <cstdio>
#include <string>
#include <string_view>

namespace quendal::test {

inline BSTR newText(std::u16string_view text) {
  return SysAllocStringLen(oleText(text.data()), static_cast<UINT>(text.size()));
}

// The characters of a BSTR, those beyond ASCII as "?".
inline std::string readText(BSTR text) {
  std::string read;
  for (UINT i = 0; i < SysStringLen(text); ++i)
    read += text[i] < 0x80 ? static_cast<char>(text[i]) : '?';
  return read;
}

// A VARIANT that owns what it holds.
class Value {
 public:
  Value() { VariantInit(&value); }
  Value(const Value& other) : Value() { VariantCopy(&value, other.source()); }
  Value& operator=(const Value&) = delete;
  ~Value() { VariantClear(&value); }

  // As the functions take it, which on some systems do not promise to leave it alone.
  [[nodiscard]] VARIANT* source() const { return const_cast<VARIANT*>(&value); }

  VARIANT value;
};

template <class Field, class Content>
Value make(VARTYPE type, Field VARIANT::*field, Content content) {
  Value made;
  made.value.*field = static_cast<Field>(content);
  made.value.vt = type;
  return made;
}

inline Value empty() { return {}; }
inline Value null() { return make(VT_NULL, &VARIANT::lVal, 0); }
inline Value i2(int n) { return make(VT_I2, &VARIANT::iVal, n); }
inline Value i4(long long n) { return make(VT_I4, &VARIANT::lVal, n); }
inline Value i8(long long n) { return make(VT_I8, &VARIANT::llVal, n); }
inline Value ui8(unsigned long long n) { return make(VT_UI8, &VARIANT::ullVal, n); }
inline Value r4(float n) { return make(VT_R4, &VARIANT::fltVal, n); }
inline Value r8(double n) { return make(VT_R8, &VARIANT::dblVal, n); }
inline Value cy(long long tenThousandths) { return make(VT_CY, &VARIANT::llVal, tenThousandths); }
inline Value date(double n) { return make(VT_DATE, &VARIANT::date, n); }
inline Value boolean(bool b) { return make(VT_BOOL, &VARIANT::boolVal, b ? -1 : 0); }
inline Value error(SCODE code) { return make(VT_ERROR, &VARIANT::scode, code); }
inline Value text(std::u16string_view characters) {
  return make(VT_BSTR, &VARIANT::bstrVal, newText(characters));
}
inline Value array(SAFEARRAY* taken) {
  return make(VT_ARRAY | VT_VARIANT, &VARIANT::parray, taken);
}
inline Value decimal(ULONG high, unsigned long long low, int scale, bool negative) {
  Value made;
  made.value.decVal.Hi32 = high;
  made.value.decVal.Lo64 = low;
  made.value.decVal.scale = static_cast<BYTE>(scale);
  made.value.decVal.sign = negative ? 0x80 : 0;
  made.value.vt = VT_DECIMAL;
  return made;
}

// A scalar as text, independent of the conversions under test.
inline std::string show(const VARIANT& value) {
  char buffer[64];
  const auto print = [&](const char* format, auto content) {
    std::snprintf(buffer, sizeof(buffer), format, content);
    return std::string(buffer);
  };
  if (value.vt == VT_EMPTY) return "Empty";
  if (value.vt == VT_NULL) return "Null";
  if (value.vt == VT_I1) return std::to_string(value.cVal);
  if (value.vt == VT_UI1) return std::to_string(value.bVal);
  if (value.vt == VT_I2 || value.vt == VT_BOOL) return std::to_string(value.iVal);
  if (value.vt == VT_I4 || value.vt == VT_INT) return std::to_string(value.lVal);
  if (value.vt == VT_I8 || value.vt == VT_CY) return std::to_string(value.llVal);
  if (value.vt == VT_UI8) return std::to_string(value.ullVal);
  if (value.vt == VT_R4) return print("%.9g", static_cast<double>(value.fltVal));
  if (value.vt == VT_R8 || value.vt == VT_DATE) return print("%.17g", value.dblVal);
  if (value.vt == VT_BSTR) return readText(value.bstrVal);
  if (value.vt == VT_DECIMAL)
    return (value.decVal.sign != 0 ? "-" : "") + std::to_string(value.decVal.Lo64) + "/" +
           std::to_string(value.decVal.scale);
  return print("type %d", static_cast<int>(value.vt));
}

// The elements of an array of variants, with blanks between them.
inline std::string list(const VARIANT& array) {
  if (array.vt != (VT_ARRAY | VT_VARIANT)) return show(array);
  std::string shown;
  for (ULONG i = 0; i < array.parray->rgsabound[0].cElements; ++i)
    shown += (i == 0 ? "" : " ") + show(static_cast<VARIANT*>(array.parray->pvData)[i]);
  return shown;
}

// An object whose default value is a number, or an error.
class Counter final : public IDispatch {
 public:
  explicit Counter(HRESULT answer = S_OK) : answer_(answer) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    *object = nullptr;
    if (!(iid == IID_IUnknown) && !(iid == IID_IDispatch)) return E_NOINTERFACE;
    *object = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
  ULONG STDMETHODCALLTYPE Release() override { return --references; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return DISP_E_UNKNOWNNAME;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS*,
                                   VARIANT* result, EXCEPINFO*, UINT*) override {
    if (id != DISPID_VALUE || (flags & DISPATCH_PROPERTYGET) == 0) return DISP_E_MEMBERNOTFOUND;
    if (FAILED(answer_)) return answer_;
    result->vt = VT_I4;
    result->lVal = 42;
    return S_OK;
  }

  ULONG references = 1;

 private:
  HRESULT answer_;
};

inline Value reference(Counter& object) {
  object.AddRef();
  return make(VT_DISPATCH, &VARIANT::pdispVal, &object);
}

}  // namespace quendal::test
