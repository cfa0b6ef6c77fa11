#include "automation/text_output.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <string_view>

namespace quendal::automation {

TextMemory::~TextMemory() { std::free(characters_); }

bool TextMemory::resize(std::size_t capacity) noexcept {
  constexpr std::size_t kMost = std::numeric_limits<std::size_t>::max() / 2 / sizeof(char16_t);
  if (capacity > kMost) return false;
  // One more, so that nothing is not asked for: the answer would be null.
  void* grown = std::realloc(characters_, (capacity + 1) * sizeof(char16_t));
  if (grown == nullptr) return false;
  characters_ = static_cast<char16_t*>(grown);
  capacity_ = capacity;
  return true;
}

BSTR TextMemory::take(std::size_t length) noexcept {
  BSTR text = SysAllocStringLen(oleText(characters_), static_cast<UINT>(length));
  if (text == nullptr) return nullptr;
  std::free(characters_);
  characters_ = nullptr;
  capacity_ = 0;
  return text;
}

std::size_t writeRealText(double value, char16_t* out) noexcept {
  BSTR text = nullptr;
  if (FAILED(VarBstrFromR8(value, LOCALE_INVARIANT, 0, &text))) return 0;
  const std::u16string_view view(plainText(text), SysStringLen(text));
  const std::size_t length = view.copy(out, kLongestRealText);
  std::replace(out, out + length, u',', u'.');
  SysFreeString(text);
  return length;
}

}  // namespace quendal::automation
