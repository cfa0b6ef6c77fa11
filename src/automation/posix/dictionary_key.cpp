#include "automation/posix/dictionary_key.h"

#include <sys/auxv.h>

#include <bit>
#include <cmath>
#include <cstring>
#include <limits>

#include "automation/posix/number_text.h"
#include "automation/posix/strings.h"
#include "platform/locale.h"

namespace quendal::automation {
namespace {

using Kind = DictionaryKey::Kind;

DictionaryKey integerKey(std::int64_t value) noexcept {
  DictionaryKey key;
  key.kind = Kind::Integer;
  key.integer = value;
  return key;
}

DictionaryKey realKey(double value) noexcept {
  constexpr double kBeyond = 0x1p63;
  if (value >= -kBeyond && value < kBeyond && value == std::trunc(value)) {
    return integerKey(static_cast<std::int64_t>(value));
  }
  DictionaryKey key;
  key.kind = Kind::Real;
  key.real = value;
  return key;
}

DictionaryKey unsignedKey(std::uint64_t value) noexcept {
  if (value > std::numeric_limits<std::int64_t>::max()) {
    return realKey(static_cast<double>(value));
  }
  return integerKey(static_cast<std::int64_t>(value));
}

DictionaryKey currencyKey(std::int64_t value) noexcept {
  constexpr std::int64_t kUnit = 10000;
  if (value % kUnit == 0) return integerKey(value / kUnit);
  return realKey(static_cast<double>(value) / static_cast<double>(kUnit));
}

// The one pointer by which an object is known, whatever interface it was reached through.
DictionaryKey objectKey(IUnknown* object) noexcept {
  DictionaryKey key;
  key.kind = Kind::Object;
  key.object = object;
  void* identity = nullptr;
  if (object != nullptr && SUCCEEDED(object->QueryInterface(IID_IUnknown, &identity))) {
    key.object = identity;
    static_cast<IUnknown*>(identity)->Release();
  }
  return key;
}

constexpr bool isAscii(char16_t c) noexcept { return c < 0x80; }
constexpr char16_t lowerAscii(char16_t c) noexcept {
  return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
}

bool isSameText(std::u16string_view a, std::u16string_view b, bool ignoreCase) {
  if (a.size() != b.size()) return false;
  if (a.empty()) return true;
  if (!ignoreCase) return std::memcmp(a.data(), b.data(), a.size() * sizeof(char16_t)) == 0;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (lowerAscii(a[i]) == lowerAscii(b[i])) continue;
    if (isAscii(a[i]) && isAscii(b[i])) return false;
    return platform::lowerCase(a.substr(i)) == platform::lowerCase(b.substr(i));
  }
  return true;
}

std::uint64_t mix(std::uint64_t a, std::uint64_t b) noexcept {
  const UInt128 product = UInt128{a} * b;
  return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

constexpr std::uint64_t kOdd1 = 0x9E3779B97F4A7C15;
constexpr std::uint64_t kOdd2 = 0xD1B54A32D192ED03;

// Drawn by the system when the process starts.
const std::uint64_t kSeed = [] {
  std::uint64_t drawn[2] = {reinterpret_cast<std::uintptr_t>(&kOdd1), kOdd2};
  const auto* random = reinterpret_cast<const void*>(getauxval(AT_RANDOM));
  if (random != nullptr) std::memcpy(drawn, random, sizeof(drawn));
  return mix(drawn[0], drawn[1]);
}();

std::uint32_t finish(std::uint64_t hash) noexcept {
  return static_cast<std::uint32_t>(mix(hash ^ kSeed, kOdd1));
}

}  // namespace

HRESULT readKey(const VARIANT& value, DictionaryKey& key) noexcept {
  switch (value.vt) {
    case VT_EMPTY:
      key = {};
      return S_OK;
    case VT_NULL:
      key = {};
      key.kind = Kind::Null;
      return S_OK;
    case VT_BSTR:
      key = textKey(viewOf(value.bstrVal));
      return S_OK;
    case VT_I1:
      key = integerKey(value.cVal);
      return S_OK;
    case VT_I2:
    case VT_BOOL:
      key = integerKey(value.iVal);
      return S_OK;
    case VT_I4:
    case VT_INT:
      key = integerKey(value.lVal);
      return S_OK;
    case VT_I8:
      key = integerKey(value.llVal);
      return S_OK;
    case VT_UI1:
      key = integerKey(value.bVal);
      return S_OK;
    case VT_UI2:
      key = integerKey(value.uiVal);
      return S_OK;
    case VT_UI4:
    case VT_UINT:
      key = integerKey(value.ulVal);
      return S_OK;
    case VT_UI8:
      key = unsignedKey(value.ullVal);
      return S_OK;
    case VT_R4:
      key = realKey(static_cast<double>(value.fltVal));
      return S_OK;
    case VT_R8:
    case VT_DATE:
      key = realKey(value.dblVal);
      return S_OK;
    case VT_CY:
      key = currencyKey(value.cyVal.int64);
      return S_OK;
    case VT_DECIMAL:
      key = realKey(toReal(exactOf(value.decVal)).value_or(0));
      return S_OK;
    case VT_DISPATCH:
    case VT_UNKNOWN:
      key = objectKey(value.punkVal);
      return S_OK;
    default:
      return DISP_E_TYPEMISMATCH;
  }
}

bool isSameKey(const DictionaryKey& key, const VARIANT& value, bool ignoreCase) {
  if (key.kind == Kind::Text) {
    return value.vt == VT_BSTR && isSameText(key.text, viewOf(value.bstrVal), ignoreCase);
  }
  DictionaryKey other;
  if (FAILED(readKey(value, other)) || other.kind != key.kind) return false;
  switch (key.kind) {
    case Kind::Integer:
      return key.integer == other.integer;
    case Kind::Real:  // by its bits, so that not-a-number is found again
      return std::bit_cast<std::uint64_t>(key.real) == std::bit_cast<std::uint64_t>(other.real);
    case Kind::Object:
      return key.object == other.object;
    default:
      return true;
  }
}

std::uint32_t hashOfText(std::u16string_view text) noexcept {
  std::uint64_t hash = kSeed ^ text.size() * kOdd1;
  const char16_t* next = text.data();
  std::size_t left = text.size();
  std::uint64_t block = 0;
  constexpr std::size_t kPerBlock = sizeof(block) / sizeof(char16_t);
  for (; left >= kPerBlock; left -= kPerBlock, next += kPerBlock) {
    std::memcpy(&block, next, sizeof(block));
    hash = mix(hash ^ block, kOdd2);
  }
  if (left > 0) {
    block = 0;
    std::memcpy(&block, next, left * sizeof(char16_t));
    hash = mix(hash ^ block, kOdd2);
  }
  return finish(hash);
}

std::uint32_t hashOf(const DictionaryKey& key, bool ignoreCase) {
  switch (key.kind) {
    case Kind::Text:
      return ignoreCase ? hashOfText(platform::lowerCase(key.text)) : hashOfText(key.text);
    case Kind::Integer:
      return finish(static_cast<std::uint64_t>(key.integer));
    case Kind::Real:
      return finish(std::bit_cast<std::uint64_t>(key.real));
    case Kind::Object:
      return finish(reinterpret_cast<std::uintptr_t>(key.object));
    default:
      return finish(0);
  }
}

}  // namespace quendal::automation
