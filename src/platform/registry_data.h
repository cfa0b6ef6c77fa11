// How the bytes of a registry value become the data that callers see; the same in both homes.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "platform/registry.h"

namespace quendal::platform {

/// The platform's numbers of the value types that are read.
namespace registry_type {
inline constexpr std::uint32_t kText = 1;
inline constexpr std::uint32_t kExpandableText = 2;
inline constexpr std::uint32_t kBinary = 3;
inline constexpr std::uint32_t kNumber = 4;
inline constexpr std::uint32_t kMultiText = 7;
}  // namespace registry_type

/// More bytes than this cannot be read as one text.
inline constexpr std::size_t kMaxTextBytes = 256;

/// The answer for a value that cannot be read as text.
inline constexpr std::u16string_view kRegistryError = u"<Error>";

/// A listed value's data by its type: text less its terminator (multi-text less both), numbers
/// from the first four bytes (absent ones are 0), binary as it is. Too few bytes for a
/// terminator give the empty text.
[[nodiscard]] RegistryData registryData(std::uint32_t type, std::span<const char> bytes);

/// The text that `registryText` returns for a value's bytes.
[[nodiscard]] std::u16string registryTextOf(std::span<const char> bytes);

}  // namespace quendal::platform
