// The shorter functions on text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quendal::strings {

/// The first character and each one after a blank (U+0020 only) in upper case, all others in lower
/// case. Every character goes through the host's code page, so one that it lacks becomes "?".
[[nodiscard]] std::u16string capitalize(std::u16string_view sentence);

/// How many fill characters a text of `length` characters gets for a width: their difference
/// either way, rounded to even, so that a text that is too long is lengthened by what it exceeds
/// the width by. That is deliberate. Raises 5 for not-a-number, and 7 for more characters than a
/// text can have.
[[nodiscard]] std::size_t fillCount(double width, std::size_t length);

/// What follows the last backslash, which alone separates; the whole text when there is none.
[[nodiscard]] std::u16string_view fileNameOf(std::u16string_view path) noexcept;
/// Everything up to and with the last backslash; no text when there is none.
[[nodiscard]] std::u16string_view filePathOf(std::u16string_view path) noexcept;

/// A size in bytes as bytes, KB, MB or GB, with the locale's decimal point and grouping: "1,023
/// bytes", "1.50KB". Empty from 10000000 KB on. Negative sizes are bytes. `size` is finite.
[[nodiscard]] std::u16string fileSizeText(double size);
/// A size in bytes: "1,536 bytes".
[[nodiscard]] std::u16string bytesText(double size);

/// Appends a text as UTF-8 to a file that exists, with one write: what the file holds, a byte-order
/// mark included, stays untouched whatever happens. An empty file gets no byte-order mark. An
/// unpaired surrogate becomes U+FFFD. False when the file cannot be read or written; then nothing
/// was appended.
[[nodiscard]] bool appendToUtf8File(std::u16string_view path, std::u16string_view text);

}  // namespace quendal::strings
