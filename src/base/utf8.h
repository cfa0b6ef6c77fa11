// UTF-8 and UTF-16.
#pragma once

#include <string>
#include <string_view>

namespace quendal {

/// UTF-8 both ways; an unpaired surrogate becomes U+FFFD, and so does each longest part of a
/// malformed sequence that could have begun a character.
[[nodiscard]] std::string toUtf8(std::u16string_view text);
[[nodiscard]] std::u16string fromUtf8(std::string_view bytes);

}  // namespace quendal
