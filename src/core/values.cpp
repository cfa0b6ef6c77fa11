#include <quendal/object.h>
#include <quendal/variant.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <utility>

#include "automation/element_size.h"

namespace quendal {
namespace {

// Some systems' headers declare a source that is only read without const.
VARIANT* readOnly(const VARIANT& value) noexcept { return const_cast<VARIANT*>(&value); }

}  // namespace

Variant::Variant(std::u16string_view text) : Variant() {
  bstrVal = newBstr(text);
  vt = VT_BSTR;
}

Variant::Variant(Text&& text) noexcept : Variant() {
  bstrVal = text.release();
  vt = VT_BSTR;
}

Variant::Variant(std::int16_t value) noexcept : Variant() {
  vt = VT_I2;
  iVal = value;
}

Variant::Variant(std::int32_t value) noexcept : Variant() {
  vt = VT_I4;
  lVal = value;
}

Variant::Variant(double value) noexcept : Variant() {
  vt = VT_R8;
  dblVal = value;
}

Variant::Variant(Boolean value) noexcept : Variant() {
  vt = VT_BOOL;
  boolVal = static_cast<VARIANT_BOOL>(value);
}

Variant::Variant(const Object& object) noexcept : Variant() {
  vt = VT_DISPATCH;
  pdispVal = Object(object).release();
}

Variant::Variant(const Variant& other) : Variant() { check(VariantCopy(this, readOnly(other))); }

Variant::Variant(Variant&& other) noexcept : VARIANT(other.release()) {}

Variant& Variant::operator=(Variant other) noexcept {
  std::swap(static_cast<VARIANT&>(*this), static_cast<VARIANT&>(other));
  return *this;
}

Variant Variant::copyOf(const VARIANT& value) {
  const VARIANT source = follow(value);
  Variant copy;
  check(VariantCopy(&copy, readOnly(source)));
  return copy;
}

Variant Variant::attach(const VARIANT& value) noexcept {
  Variant result;
  static_cast<VARIANT&>(result) = value;
  return result;
}

Variant Variant::null() noexcept {
  Variant result;
  result.vt = VT_NULL;
  return result;
}

Variant Variant::date(DATE value) noexcept {
  Variant result;
  result.vt = VT_DATE;
  result.VARIANT::date = value;
  return result;
}

Variant Variant::missing() noexcept {
  Variant result;
  result.vt = VT_ERROR;
  result.scode = DISP_E_PARAMNOTFOUND;
  return result;
}

Variant Variant::array(SAFEARRAY* array, VARTYPE elementType) noexcept {
  Variant result;
  result.vt = static_cast<VARTYPE>(VT_ARRAY | elementType);
  result.parray = array;
  return result;
}

VARIANT Variant::release() noexcept {
  const VARIANT value = *this;
  VariantInit(this);
  return value;
}

VARIANT follow(const VARIANT& value) noexcept {
  const VARIANT* source = &value;
  while (source->vt == kVariantReference && source->pvarVal != nullptr) source = source->pvarVal;
  if ((source->vt & VT_BYREF) == 0) return *source;

  VARIANT result;
  VariantInit(&result);
  if (source->byref == nullptr) return result;
  const auto type = static_cast<VARTYPE>(source->vt & ~VT_BYREF);
  const bool isArray = (type & VT_ARRAY) != 0;
  const std::size_t size = isArray ? sizeof(SAFEARRAY*) : automation::elementSize(type);
  if (size == 0 || type == VT_VARIANT) return result;
  if (type == VT_DECIMAL)
    result.decVal = *source->pdecVal;  // overlays the tag, set below
  else
    std::memcpy(&result.byref, source->byref, size);
  result.vt = type;
  return result;
}

bool isMissing(const VARIANT& value) noexcept {
  const VARIANT plain = follow(value);
  return plain.vt == VT_ERROR && plain.scode == DISP_E_PARAMNOTFOUND;
}

Variant converted(const VARIANT& value, VARTYPE type) {
  const VARIANT source = follow(value);
  if (source.vt == VT_NULL) throw AutomationError(error_number::kInvalidNull);
  // Some systems would make a text of bytes.
  if ((source.vt & VT_ARRAY) != 0) throw AutomationError(error_number::kTypeMismatch);
  if (source.vt == VT_DISPATCH && source.pdispVal == nullptr)
    throw AutomationError(error_number::kObjectNotSet);
  if (isObject(source)) {
    // Asked here rather than by the runtime, which hides the object's own error.
    const Variant inner = Object::from(source).defaultValue();
    if (isObject(inner)) throw AutomationError(error_number::kNoSuchMember);
    return converted(inner, type);
  }
  Variant result;
  check(VariantChangeTypeEx(&result, readOnly(source), kUserLocale, VARIANT_ALPHABOOL, type));
  return result;
}

std::u16string textOf(const VARIANT& value) {
  const VARIANT source = follow(value);
  if (source.vt == VT_BSTR) return std::u16string(viewOf(source.bstrVal));
  return std::u16string(viewOf(converted(source, VT_BSTR).bstrVal));
}

std::u16string joinedTextOf(const VARIANT& value) {
  const VARIANT source = follow(value);
  if (source.vt == VT_NULL) return {};
  if (source.vt == VT_DISPATCH && source.pdispVal != nullptr) {
    const Variant inner = Object::from(source).defaultValue();
    if (inner.vt == VT_NULL) return {};
    return textOf(inner);
  }
  return textOf(source);
}

std::int32_t int32Of(const VARIANT& value) {
  const VARIANT source = follow(value);
  return source.vt == VT_I4 ? source.lVal : converted(source, VT_I4).lVal;
}

std::int16_t int16Of(const VARIANT& value) {
  const VARIANT source = follow(value);
  return source.vt == VT_I2 ? source.iVal : converted(source, VT_I2).iVal;
}

double doubleOf(const VARIANT& value) {
  const VARIANT source = follow(value);
  return source.vt == VT_R8 ? source.dblVal : converted(source, VT_R8).dblVal;
}

namespace {

/// The type information that an object gives of its class, or else of itself; null for none.
ITypeInfo* typeInfoOf(IUnknown& object) {
  ITypeInfo* info = nullptr;
  void* found = nullptr;
  if (SUCCEEDED(object.QueryInterface(IID_IProvideClassInfo, &found))) {
    auto* provider = static_cast<IProvideClassInfo*>(found);
    const HRESULT code = provider->GetClassInfo(&info);
    provider->Release();
    if (SUCCEEDED(code) && info != nullptr) return info;
  }
  if (FAILED(object.QueryInterface(IID_IDispatch, &found))) return nullptr;
  const Object dispatch = Object::attach(static_cast<IDispatch*>(found));
  return SUCCEEDED(dispatch.dispatch()->GetTypeInfo(0, 0, &info)) ? info : nullptr;
}

std::u16string objectTypeName(IUnknown* object) {
  if (object == nullptr) return u"Nothing";
  ITypeInfo* const info = typeInfoOf(*object);
  if (info == nullptr) return u"Object";
  BSTR raw = nullptr;
  static_cast<void>(info->GetDocumentation(MEMBERID_NIL, &raw, nullptr, nullptr, nullptr));
  const Text name = Text::attach(raw);
  info->Release();
  std::u16string_view view = name;
  if (view.starts_with(u'_')) view.remove_prefix(1);  // an interface stands for its class
  return view.empty() ? u"Object" : std::u16string(view);
}

struct TypeName {
  VARTYPE type;
  std::u16string_view name;
};
constexpr TypeName kTypeNames[] = {
    {VT_EMPTY, u"Empty"},     {VT_NULL, u"Null"},       {VT_I2, u"Integer"},  {VT_I4, u"Long"},
    {VT_R4, u"Single"},       {VT_R8, u"Double"},       {VT_CY, u"Currency"}, {VT_DATE, u"Date"},
    {VT_BSTR, u"String"},     {VT_DISPATCH, u"Object"}, {VT_ERROR, u"Error"}, {VT_BOOL, u"Boolean"},
    {VT_VARIANT, u"Variant"}, {VT_DECIMAL, u"Decimal"}, {VT_UI1, u"Byte"},
};

std::u16string plainTypeName(VARTYPE type) {
  const auto* found = std::ranges::find(kTypeNames, type, &TypeName::type);
  return std::u16string(found == std::end(kTypeNames) ? u"Unknown" : found->name);
}

}  // namespace

std::u16string typeNameOf(const VARIANT& value) {
  const VARIANT plain = follow(value);
  if ((plain.vt & VT_ARRAY) != 0)
    return plainTypeName(static_cast<VARTYPE>(plain.vt & VT_TYPEMASK)) + u"()";
  if (isObject(plain)) {
    const Variant held = Variant::copyOf(plain);  // what it does when asked may let go of it
    return objectTypeName(held.punkVal);
  }
  return plainTypeName(plain.vt);
}

}  // namespace quendal
