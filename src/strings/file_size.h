// Sizes of files for people, with the locale's decimal point and grouping.
#pragma once

#include <string>

namespace quendal::strings {

/// A size in bytes as bytes, KB, MB or GB: "1,023 bytes", "1.50KB". Empty from 10000000 KB on,
/// and for infinities and not-a-number. Negative sizes are bytes.
[[nodiscard]] std::u16string fileSizeText(double size);

/// A size in bytes: "1,536 bytes".
[[nodiscard]] std::u16string bytesText(double size);

}  // namespace quendal::strings
