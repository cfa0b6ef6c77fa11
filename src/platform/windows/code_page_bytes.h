// Conversion by the system, with the code page by its number.
#pragma once

#include <string>
#include <string_view>

namespace quendal::platform {

/// All bytes of each character; the system's replacement for what the code page lacks.
[[nodiscard]] std::string toBytes(std::u16string_view text, unsigned codePage);

/// The characters of bytes.
[[nodiscard]] std::u16string fromBytes(std::string_view bytes, unsigned codePage);

}  // namespace quendal::platform
