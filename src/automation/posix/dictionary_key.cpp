#include "automation/posix/dictionary_key.h"

#include <quendal/text.h>
#include <sys/auxv.h>

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <type_traits>

#include "automation/posix/number_text.h"
#include "platform/locale.h"

namespace quendal::automation {
namespace {

// The same for all numbers of one value: whole ones as integers wherever they fit.
DictionaryKey numberKey(const Number& number) noexcept {
  constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
  const ExactNumber& exact = number.exact;
  if (number.isExact() && exact.exponent == 0 && exact.magnitude <= UInt128{kMost}) {
    const auto magnitude = static_cast<std::int64_t>(exact.magnitude);
    return exact.negative ? -magnitude : magnitude;
  }
  constexpr double kBeyond = 0x1p63;
  const double real = realOf(number).value_or(0);
  if (real >= -kBeyond && real < kBeyond && real == std::trunc(real))
    return static_cast<std::int64_t>(real);
  return RealKey{std::bit_cast<std::uint64_t>(real)};
}

DictionaryKey objectKey(IUnknown* object) noexcept {
  void* identity = nullptr;
  if (object == nullptr || FAILED(object->QueryInterface(IID_IUnknown, &identity))) return object;
  static_cast<IUnknown*>(identity)->Release();
  return identity;
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

std::uint32_t hashOfBytes(const void* bytes, std::size_t size) noexcept {
  constexpr std::size_t kBlock = sizeof(std::uint64_t);
  std::uint64_t hash = kSeed ^ size * kOdd1;
  const auto add = [&hash](const std::byte* from, std::size_t count) {
    std::uint64_t block = 0;
    std::memcpy(&block, from, count);
    hash = mix(hash ^ block, kOdd2);
  };
  const auto* next = static_cast<const std::byte*>(bytes);
  const std::byte* const end = next + size;
  if (size >= kBlock) {
    for (; end - next > std::ptrdiff_t{kBlock}; next += kBlock) add(next, kBlock);
    add(end - kBlock, kBlock);  // some of it once more, rather than a part of a block
  } else if (size > 0) {
    add(next, size);
  }
  return static_cast<std::uint32_t>(mix(hash ^ kSeed, kOdd1));
}

std::uint32_t hashOfText(std::u16string_view text) noexcept {
  return hashOfBytes(text.data(), text.size() * sizeof(char16_t));
}

}  // namespace

HRESULT readKey(const VARIANT& value, DictionaryKey& key) noexcept {
  switch (value.vt) {
    case VT_EMPTY:
      key = EmptyKey{};
      return S_OK;
    case VT_NULL:
      key = NullKey{};
      return S_OK;
    case VT_BSTR:
      key = viewOf(value.bstrVal);
      return S_OK;
    case VT_DISPATCH:
    case VT_UNKNOWN:
      key = objectKey(value.punkVal);
      return S_OK;
    default:
      const auto number = numberOf(value);
      if (!number) return DISP_E_TYPEMISMATCH;
      key = numberKey(*number);
      return S_OK;
  }
}

bool isSameKey(const DictionaryKey& a, const DictionaryKey& b, bool ignoreCase) {
  const auto* text = std::get_if<std::u16string_view>(&a);
  const auto* other = std::get_if<std::u16string_view>(&b);
  if (!ignoreCase || text == nullptr || other == nullptr) return a == b;
  return platform::lowerCase(*text) == platform::lowerCase(*other);
}

std::uint32_t hashOf(const DictionaryKey& key, bool ignoreCase) {
  return std::visit(
      [ignoreCase](const auto& content) {
        using Content = std::decay_t<decltype(content)>;
        if constexpr (!std::is_same_v<Content, std::u16string_view>)
          return hashOfBytes(&content, sizeof(content));
        else
          return ignoreCase ? hashOfText(platform::lowerCase(content)) : hashOfText(content);
      },
      key);
}

}  // namespace quendal::automation
