// Copying a few characters, as builders of long texts do all the time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace quendal {

/// Copies characters to where they do not overlap; few are copied without a call.
inline void copyCharacters(const char16_t* from, char16_t* to, std::size_t count) noexcept {
  constexpr std::size_t kMany = 64;
  constexpr std::size_t kAtOnce = sizeof(std::uint64_t) / sizeof(char16_t);
  if (count >= kMany) {
    std::memcpy(to, from, count * sizeof(char16_t));
    return;
  }
  for (; count >= kAtOnce; count -= kAtOnce, from += kAtOnce, to += kAtOnce)
    std::memcpy(to, from, sizeof(std::uint64_t));
  for (; count > 0; --count) *to++ = *from++;
}

}  // namespace quendal
