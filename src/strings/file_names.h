// The two halves of a path. Only the backslash separates.
#pragma once

#include <string_view>

namespace quendal::strings {

/// What follows the last backslash; the whole text when there is none.
[[nodiscard]] constexpr std::u16string_view fileNameOf(std::u16string_view path) noexcept {
  return path.substr(path.rfind(u'\\') + 1);
}

/// Everything up to and with the last backslash; no text when there is none.
[[nodiscard]] constexpr std::u16string_view filePathOf(std::u16string_view path) noexcept {
  return path.substr(0, path.rfind(u'\\') + 1);
}

}  // namespace quendal::strings
