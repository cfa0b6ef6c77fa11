// Fill characters before and after texts.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quendal::strings {

/// How many fill characters a text of `length` characters gets for a width: their difference
/// either way, rounded to even, so that a text that is too long is lengthened by what it exceeds
/// the width by. That is deliberate. Raises 5 for not-a-number, and 7 for more characters than a
/// text can have.
[[nodiscard]] std::size_t fillCount(double width, std::size_t length);

/// The fill character of a fill text: its first one, or a blank when it is empty.
[[nodiscard]] constexpr char16_t fillCharacter(std::u16string_view fill) noexcept {
  return fill.empty() ? u' ' : fill.front();
}

/// A text with fill characters before it, and with fill characters after it.
[[nodiscard]] std::u16string padLeft(std::u16string_view text, char16_t fill, double width);
[[nodiscard]] std::u16string padRight(std::u16string_view text, char16_t fill, double width);

}  // namespace quendal::strings
