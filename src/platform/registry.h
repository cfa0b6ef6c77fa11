// Read-only view of the local machine's registry. Paths are as below HKEY_LOCAL_MACHINE, names
// are compared without case.
// On POSIX the view is composed from what the system knows (posix/registry_tree.h).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace quendal::platform {

/// A value's data: nothing for types that are not read, text (types 1, 2 and 7), a number (type
/// 4), or raw bytes (type 3).
using RegistryData =
    std::variant<std::monostate, std::u16string, std::int32_t, std::vector<std::byte>>;

struct RegistryValue {
  std::u16string name;
  RegistryData data;
};

/// The text of a value, as its bytes less one (the terminator) read in the code page, whatever
/// its type. "<Error>" when the value is missing or longer than 256 bytes; no value at all when
/// the key cannot be opened. Throws std::invalid_argument for a value of no bytes at all.
[[nodiscard]] std::optional<std::u16string> registryText(std::u16string_view key,
                                                         std::u16string_view name);

/// All values of a key in the registry's order; multi-text keeps its strings separated by NUL.
/// Empty when the key cannot be opened. The empty key is the root itself.
[[nodiscard]] std::vector<RegistryValue> registryValues(std::u16string_view key);

/// Names of all subkeys in the registry's order. Empty when the key cannot be opened. The empty
/// key is the root itself.
[[nodiscard]] std::vector<std::u16string> registryKeys(std::u16string_view key);

}  // namespace quendal::platform
