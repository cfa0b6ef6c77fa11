// What questions to the registry are answered from.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quendal::platform {

/// A value as a registry stores it: text in the code page and with its terminator.
struct StoredValue {
  std::u16string name;
  std::uint32_t type = 0;
  std::string bytes;
};

struct StoredKey {
  std::u16string path;  // parts separated by `\`; the keys above it exist, too
  std::vector<StoredValue> values;
};

/// Keys in the order in which they are listed, none twice.
using RegistryTree = std::vector<StoredKey>;

/// What the system knows of `key`, of the keys above it and of those below. It is asked anew each
/// time, so that what is installed meanwhile shows.
///
/// - the product name: `PRETTY_NAME` of the OS release file;
/// - installed ODBC drivers: the sections of the driver manager's `odbcinst.ini`, in the folder
///   that `ODBCSYSINI` names or in /etc, each with the text "Installed";
/// - installed runtimes, from `DOTNET_ROOT` and the usual folders: 8.0.11 is the value "11" of
///   the policy key v8.0.
[[nodiscard]] RegistryTree systemRegistry(std::u16string_view key);

/// Whether `path` is `key` or lies below it. Names are compared without case.
[[nodiscard]] bool isWithin(std::u16string_view path, std::u16string_view key) noexcept;

/// Answers all questions from `tree`, which must outlive this; from the system again when null.
void answerFrom(const RegistryTree* tree) noexcept;

}  // namespace quendal::platform
