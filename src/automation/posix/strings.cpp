#include "automation/posix/strings.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

namespace quendal::automation {
namespace {

using LengthPrefix = std::uint32_t;  // of the text in bytes, without the terminator

constexpr UINT kLongest = (0xFFFFFFFFU - sizeof(LengthPrefix)) / sizeof(OLECHAR) - 1;

// What stands before the characters of a shared text. It ends with the length, as for any BSTR, and
// is as long as blocks of memory are aligned; the characters of other texts never are aligned so,
// as only the length stands before them. That tells the two apart.
struct SharedHeader {
  std::uint32_t owners;
  std::uint32_t hash;
  std::uint32_t unused;
  LengthPrefix bytes;
};
static_assert(sizeof(SharedHeader) % alignof(std::max_align_t) == 0 &&
              sizeof(LengthPrefix) % alignof(std::max_align_t) != 0);

SharedHeader& headerOf(BSTR shared) noexcept {
  return *reinterpret_cast<SharedHeader*>(reinterpret_cast<std::byte*>(shared) -
                                          sizeof(SharedHeader));
}

// A block with room before the text, which is copied in and terminated. Without a text the caller
// fills in the characters.
std::byte* newBlock(std::size_t header, const OLECHAR* text, UINT length) noexcept {
  if (length > kLongest) return nullptr;
  const std::size_t bytes = std::size_t{length} * sizeof(OLECHAR);
  auto* block = static_cast<std::byte*>(std::malloc(header + bytes + sizeof(OLECHAR)));
  if (block == nullptr) return nullptr;
  const auto prefix = static_cast<LengthPrefix>(bytes);
  std::memcpy(block + header - sizeof(prefix), &prefix, sizeof(prefix));
  auto* characters = reinterpret_cast<OLECHAR*>(block + header);
  if (text != nullptr) std::memcpy(characters, text, bytes);
  characters[length] = u'\0';
  return block;
}

}  // namespace

BSTR resizeText(BSTR text, std::size_t length) noexcept {
  if (length > kLongest) return nullptr;
  const std::size_t bytes = length * sizeof(OLECHAR);
  auto* old = text == nullptr ? nullptr : reinterpret_cast<std::byte*>(text) - sizeof(LengthPrefix);
  auto* block =
      static_cast<std::byte*>(std::realloc(old, sizeof(LengthPrefix) + bytes + sizeof(OLECHAR)));
  if (block == nullptr) return nullptr;
  const auto prefix = static_cast<LengthPrefix>(bytes);
  std::memcpy(block, &prefix, sizeof(prefix));
  auto* resized = reinterpret_cast<BSTR>(block + sizeof(LengthPrefix));
  resized[length] = u'\0';
  return resized;
}

BSTR newSharedText(std::u16string_view text, std::uint32_t hash) noexcept {
  if (text.size() > kLongest) return nullptr;
  std::byte* block = newBlock(sizeof(SharedHeader), text.data() == nullptr ? u"" : text.data(),
                              static_cast<UINT>(text.size()));
  if (block == nullptr) return nullptr;
  auto* shared = reinterpret_cast<BSTR>(block + sizeof(SharedHeader));
  headerOf(shared).owners = 1;
  headerOf(shared).hash = hash;
  return shared;
}

bool isSharedText(BSTR text) noexcept {
  return text != nullptr && reinterpret_cast<std::uintptr_t>(text) % alignof(std::max_align_t) == 0;
}

BSTR shareText(BSTR shared) noexcept {
  ++headerOf(shared).owners;
  return shared;
}

std::uint32_t hashOfShared(BSTR shared) noexcept { return headerOf(shared).hash; }

}  // namespace quendal::automation

using namespace quendal::automation;

BSTR SysAllocStringLen(const OLECHAR* text, UINT length) noexcept {
  std::byte* block = newBlock(sizeof(LengthPrefix), text, length);
  return block == nullptr ? nullptr : reinterpret_cast<BSTR>(block + sizeof(LengthPrefix));
}

BSTR SysAllocString(const OLECHAR* text) noexcept {
  if (text == nullptr) return nullptr;
  return newText(text);
}

void SysFreeString(BSTR text) noexcept {
  if (text == nullptr) return;
  if (!isSharedText(text)) {
    std::free(reinterpret_cast<std::byte*>(text) - sizeof(LengthPrefix));
  } else if (--headerOf(text).owners == 0) {
    std::free(&headerOf(text));
  }
}
