// Bytes and characters of a page's code page.
#pragma once

#include <string>
#include <string_view>

namespace quendal::host {

inline constexpr unsigned kUtf8 = 65001;

/// Throws std::invalid_argument for a code page that the system lacks; 0 is the system's own.
void checkCodePage(unsigned codePage);
[[nodiscard]] std::u16string decoded(std::string_view bytes, unsigned codePage);
[[nodiscard]] std::string encoded(std::u16string_view text, unsigned codePage);

/// "%" and two digits for each byte that is no ASCII letter or digit, "+" for a blank.
[[nodiscard]] std::string percentEncoded(std::u16string_view text, unsigned codePage);
/// < > & and " as entities.
[[nodiscard]] std::u16string htmlEncoded(std::u16string_view text);

}  // namespace quendal::host
