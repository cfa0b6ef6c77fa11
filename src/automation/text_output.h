// What goes into long texts: memory that becomes a text, and numbers.
#pragma once

#include <quendal/automation.h>

#include <cstddef>

namespace quendal::automation {

/// Memory for a text that grows to a length nobody knows before.
class TextMemory {
 public:
  TextMemory() noexcept = default;
  TextMemory(const TextMemory&) = delete;
  TextMemory& operator=(const TextMemory&) = delete;
  ~TextMemory();

  [[nodiscard]] char16_t* characters() const noexcept { return characters_; }
  [[nodiscard]] std::size_t capacity() const noexcept { return capacity_; }

  /// Room for so many characters in all; what there is stays as far as it goes. False, and nothing
  /// changes, without memory.
  [[nodiscard]] bool resize(std::size_t capacity) noexcept;

  /// A text of the first characters, which the caller owns; the memory is gone then. Null without
  /// memory.
  [[nodiscard]] BSTR take(std::size_t length) noexcept;

 private:
  char16_t* characters_ = nullptr;
  std::size_t capacity_ = 0;
};

/// More characters than any double's text has.
inline constexpr std::size_t kLongestRealText = 64;

/// Writes the ordinary text of a double, as a script's conversion to text gives it in the user's
/// locale, but with "." for ",". Returns its length, at most kLongestRealText.
[[nodiscard]] std::size_t writeRealText(double value, char16_t* out) noexcept;

}  // namespace quendal::automation
