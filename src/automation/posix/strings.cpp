#include "automation/posix/strings.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace quendal::automation {
namespace {

using LengthPrefix = std::uint32_t;  // of the text in bytes, without the terminator

constexpr std::size_t kLongest = (0xFFFFFFFFU - sizeof(LengthPrefix)) / sizeof(OLECHAR) - 1;

void* blockOf(BSTR text) noexcept {
  return text == nullptr ? nullptr : reinterpret_cast<std::byte*>(text) - sizeof(LengthPrefix);
}

}  // namespace

BSTR resizeText(BSTR text, std::size_t length) noexcept {
  if (length > kLongest) return nullptr;
  const std::size_t bytes = length * sizeof(OLECHAR);
  void* block = std::realloc(blockOf(text), sizeof(LengthPrefix) + bytes + sizeof(OLECHAR));
  if (block == nullptr) return nullptr;
  const auto prefix = static_cast<LengthPrefix>(bytes);
  std::memcpy(block, &prefix, sizeof(prefix));
  auto* resized = reinterpret_cast<BSTR>(static_cast<std::byte*>(block) + sizeof(LengthPrefix));
  resized[length] = u'\0';
  return resized;
}

}  // namespace quendal::automation

using namespace quendal::automation;

BSTR SysAllocStringLen(const OLECHAR* text, UINT length) noexcept {
  if (text != nullptr) return newText({text, length});
  return resizeText(nullptr, length);
}

BSTR SysAllocString(const OLECHAR* text) noexcept {
  return text == nullptr ? nullptr : newText(text);
}

void SysFreeString(BSTR text) noexcept { std::free(blockOf(text)); }
