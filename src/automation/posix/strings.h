// Inside views of the runtime's strings.
#pragma once

#include <quendal/text.h>

#include <cstddef>
#include <string_view>

namespace quendal::automation {

/// A text, or null, with another length: what it had stays as far as it goes, what is new is not
/// set. Null when memory is short; then the text is as it was.
[[nodiscard]] BSTR resizeText(BSTR text, std::size_t length) noexcept;

/// A new BSTR of these characters. Null when memory is short.
[[nodiscard]] inline BSTR newText(std::u16string_view text) noexcept {
  BSTR made = resizeText(nullptr, text.size());
  if (made != nullptr) text.copy(made, text.size());
  return made;
}

}  // namespace quendal::automation
