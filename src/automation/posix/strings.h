// Inside views of the runtime's strings.
#pragma once

#include <quendal/automation.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quendal::automation {

/// The characters of a BSTR; none for null.
[[nodiscard]] inline std::u16string_view viewOf(BSTR text) noexcept {
  return text == nullptr ? std::u16string_view() : std::u16string_view(text, SysStringLen(text));
}

/// A new BSTR of these characters. Null when memory is short.
[[nodiscard]] inline BSTR newText(std::u16string_view text) noexcept {
  if (text.size() > 0x7FFFFFFFU) return nullptr;
  return SysAllocStringLen(text.data() == nullptr ? u"" : text.data(),
                           static_cast<UINT>(text.size()));
}

/// A text, or null, with another length: what it had stays as far as it goes, what is new is not
/// set. Null when memory is short; then the text is as it was.
[[nodiscard]] BSTR resizeText(BSTR text, std::size_t length) noexcept;

// Texts that several owners share. Each is a BSTR like any other for whoever reads or frees it, and
// goes with its last owner; nobody may change it. Owners are of one thread.

/// A new text with one owner, and a number to keep with it. Null when memory is short.
[[nodiscard]] BSTR newSharedText(std::u16string_view text, std::uint32_t hash) noexcept;

[[nodiscard]] bool isSharedText(BSTR text) noexcept;

/// Adds an owner to a shared text.
BSTR shareText(BSTR shared) noexcept;

/// The number kept with a shared text.
[[nodiscard]] std::uint32_t hashOfShared(BSTR shared) noexcept;

}  // namespace quendal::automation
