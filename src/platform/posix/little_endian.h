// Numbers of a file format that stores them with the low byte first.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace quendal::platform {

/// The number at `offset`, which must lie inside `bytes` with all its bytes.
[[nodiscard]] inline std::uint16_t load16(std::span<const std::byte> bytes, std::size_t offset) {
  return static_cast<std::uint16_t>(std::to_integer<unsigned>(bytes[offset]) |
                                    std::to_integer<unsigned>(bytes[offset + 1]) << 8);
}

[[nodiscard]] inline std::uint32_t load32(std::span<const std::byte> bytes, std::size_t offset) {
  return load16(bytes, offset) | static_cast<std::uint32_t>(load16(bytes, offset + 2)) << 16;
}

}  // namespace quendal::platform
