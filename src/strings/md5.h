// The MD5 message digest.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace quendal::strings {

using Md5Digest = std::array<std::uint8_t, 16>;

/// The digest of some bytes, in the order in which it is written.
[[nodiscard]] Md5Digest md5(std::string_view bytes) noexcept;

/// A digest as 32 lower-case hexadecimal digits.
[[nodiscard]] std::u16string hexText(const Md5Digest& digest);

}  // namespace quendal::strings
