// An owned automation string.
#pragma once

#include <quendal/automation.h>

#include <new>
#include <string>
#include <string_view>
#include <utility>

namespace quendal {

/// Reads a BSTR, whose null is the empty string.
inline std::u16string_view viewOf(BSTR text) noexcept {
  return text == nullptr ? std::u16string_view{}
                         : std::u16string_view(plainText(text), SysStringLen(text));
}

/// Allocates a BSTR that the caller owns. Throws std::bad_alloc, also for more characters than a
/// BSTR can hold.
inline BSTR newBstr(std::u16string_view text) {
  constexpr std::size_t kLongest = 0x3FFFFFFE;
  if (text.size() > kLongest) throw std::bad_alloc();
  BSTR result = SysAllocStringLen(oleText(text.data()), static_cast<UINT>(text.size()));
  if (result == nullptr) throw std::bad_alloc();
  return result;
}

/// Owns a BSTR. Same size and layout as one, so that a caller's `BSTR*` can be read as a `Text&`.
class Text {
 public:
  Text() noexcept = default;
  explicit Text(std::u16string_view text) : text_(newBstr(text)) {}
  Text(const Text& other) : text_(other.text_ == nullptr ? nullptr : newBstr(other.view())) {}
  Text(Text&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
  Text& operator=(Text other) noexcept {
    std::swap(text_, other.text_);
    return *this;
  }
  ~Text() {
    if (text_ != nullptr) SysFreeString(text_);  // most go empty, moved from
  }

  /// Takes ownership of a BSTR.
  static Text attach(BSTR text) noexcept {
    Text result;
    result.text_ = text;
    return result;
  }
  /// Hands ownership to the caller.
  [[nodiscard]] BSTR release() noexcept { return std::exchange(text_, nullptr); }

  [[nodiscard]] BSTR get() const noexcept { return text_; }
  [[nodiscard]] std::u16string_view view() const noexcept { return viewOf(text_); }
  operator std::u16string_view() const noexcept { return view(); }

 private:
  BSTR text_ = nullptr;
};
static_assert(sizeof(Text) == sizeof(BSTR));

}  // namespace quendal
