#include "automation/text_output.h"

#include <algorithm>

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
  const NumberText text = realText(value, kDigits);
  std::copy(text.characters.begin(), text.characters.end(), out);  // all: that is the fastest
  return text.length;
}

}  // namespace quendal::automation
