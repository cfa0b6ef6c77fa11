// Small text files and settings of the host system.
#pragma once

#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace quendal::platform {

/// A text that the C library has allocated.
struct FreeMemory {
  void operator()(char* text) const noexcept { std::free(text); }
};
using CText = std::unique_ptr<char, FreeMemory>;

/// The bytes of a regular file; nothing for anything else and when it cannot be read. Never waits,
/// whatever the path names.
[[nodiscard]] std::optional<std::string> readTextFile(const std::string& path);

/// An environment variable; empty when it is not set.
[[nodiscard]] std::string environmentText(const char* name);

/// The home folder of the running account without a trailing separator; empty when unknown.
[[nodiscard]] std::string homeFolder();

/// The value that the last `name=value` line of a file of shell assignments gives, its quotes and
/// escapes resolved; nothing when there is no such line. Variables are not expanded.
[[nodiscard]] std::optional<std::string> assignedValue(std::string_view file,
                                                       std::string_view name);

/// Takes the next line, without its end (LF or CR LF), off `text`, which is not empty.
[[nodiscard]] std::string_view takeLine(std::string_view& text);

/// A text without the blanks and tabs around it.
[[nodiscard]] std::string_view trimmed(std::string_view text);

}  // namespace quendal::platform
