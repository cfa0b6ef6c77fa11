// Filling a text up to a width. Widths are counted in characters.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quendal {

/// The text with fill characters in front of it, or behind it: as many as its length differs from
/// the width, so that a text longer than the width is filled as well; deliberate. A fill of more
/// than one character is cut to its first; an empty one is a blank.
[[nodiscard]] std::u16string padLeft(std::u16string_view text, std::u16string_view fill,
                                     std::int32_t width);
[[nodiscard]] std::u16string padRight(std::u16string_view text, std::u16string_view fill,
                                      std::int32_t width);

}  // namespace quendal
