// What both homes read from the text of a path.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace quendal {

/// Both characters separate the parts of a path, whatever the system.
constexpr bool isSeparator(char16_t unit) noexcept { return unit == u'\\' || unit == u'/'; }

/// True when the path names a folder by its form; no file can be meant.
constexpr bool endsInSeparator(std::u16string_view path) noexcept {
  return !path.empty() && isSeparator(path.back());
}

/// The path up to the last character that is not a blank.
constexpr std::u16string_view withoutTrailingBlanks(std::u16string_view path) noexcept {
  return path.substr(0, path.find_last_not_of(u' ') + 1);
}

/// The longest path, in characters.
inline constexpr std::size_t kMaxPath = 4095;

/// True when a part has more than the 255 characters that a file system stores. The systems have
/// several errors for these, by the length of the whole.
constexpr bool hasLongPart(std::u16string_view path) noexcept {
  constexpr std::size_t kMaxPart = 255;
  if (path.size() <= kMaxPart) return false;
  std::size_t size = 0;
  return std::any_of(path.begin(), path.end(), [&size](char16_t unit) {
    size = isSeparator(unit) ? 0 : size + 1;
    return size > kMaxPart;
  });
}

/// False for a text that no system takes as a path: one that is empty or too long, in whole or in a
/// part, or that holds a NUL, after which the system would not read on.
constexpr bool isPath(std::u16string_view path) noexcept {
  return !path.empty() && path.size() <= kMaxPath && path.find(u'\0') == path.npos &&
         !hasLongPart(path);
}

}  // namespace quendal
