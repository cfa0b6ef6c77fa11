#include "automation/text_output.h"

#include "automation/posix/number_text.h"
#include "automation/posix/strings.h"

namespace quendal::automation {

// The memory is that of a BSTR all the time.
TextMemory::~TextMemory() { SysFreeString(characters_); }

bool TextMemory::resize(std::size_t capacity) noexcept {
  BSTR grown = resizeText(characters_, capacity);
  if (grown == nullptr) return false;
  characters_ = grown;
  capacity_ = capacity;
  return true;
}

BSTR TextMemory::take(std::size_t length) noexcept {
  BSTR text = resizeText(characters_, length);
  if (text == nullptr) return nullptr;
  characters_ = nullptr;
  capacity_ = 0;
  return text;
}

std::size_t writeRealText(double value, char16_t* out) noexcept {
  constexpr int kDigits = 15;
  return realText(value, kDigits).view().copy(out, kLongestRealText);
}

}  // namespace quendal::automation
