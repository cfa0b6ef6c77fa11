// Text made safe for where it goes. "Code" is a character's value in the host's code page.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quendal::strings {

/// Writes ' " & < = > and every character with a code outside 32 to 127 as "&#code;". A character
/// that the code page lacks stays as it is.
[[nodiscard]] std::u16string htmlEncode(std::u16string_view text);

/// Writes every character but those with the code of an ASCII letter or digit as "%" and its code
/// in upper-case hexadecimal. Codes below 16 have one digit only; that is deliberate.
[[nodiscard]] std::u16string urlEncode(std::u16string_view text);

/// Reads "+" as a blank and "%" with two hexadecimal digits as the character of that code. Nothing
/// when a "%" has no two digits after it.
[[nodiscard]] std::optional<std::u16string> urlDecode(std::u16string_view text);

/// Takes back the entities that `htmlEncode` writes for printable characters, one kind after the
/// other, then doubles every single quote.
[[nodiscard]] std::u16string safeSqlString(std::u16string_view text);

/// Removes single quotes, writes "_" for every other character that is no letter or digit of ASCII
/// and none of U+00E0 to U+00FC in either case, and turns the rest into upper case.
[[nodiscard]] std::u16string safeFileName(std::u16string_view text);

}  // namespace quendal::strings
