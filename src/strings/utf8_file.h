// Text at the end of UTF-8 files.
#pragma once

#include <string_view>

namespace quendal::strings {

/// Appends a text as UTF-8 to a file that exists, with one write: what the file holds, a byte-order
/// mark included, stays untouched whatever happens. An empty file gets no byte-order mark. An
/// unpaired surrogate becomes U+FFFD. False when the file cannot be read or written; then nothing
/// was appended.
[[nodiscard]] bool appendToUtf8File(std::u16string_view path, std::u16string_view text);

}  // namespace quendal::strings
