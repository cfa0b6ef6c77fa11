// The host's "ANSI" code page: the system's own on Windows, Windows-1252 elsewhere.
#pragma once

#include <string>
#include <string_view>

namespace quendal::platform {

/// The codes that the string functions know: one byte for each UTF-16 unit; "?" for what has none
/// of its own and for each half of a surrogate pair.
[[nodiscard]] std::string toCodePage(std::u16string_view text);

/// What goes to files and system calls: a character has as many bytes as the code page gives it;
/// "?" for what the code page lacks.
[[nodiscard]] std::string toSystemBytes(std::u16string_view text);

/// The characters of code-page bytes.
[[nodiscard]] std::u16string fromCodePage(std::string_view bytes);

}  // namespace quendal::platform
