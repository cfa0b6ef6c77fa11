// The shell's special folders.
#pragma once

#include <string>

namespace quendal::platform {

/// Path of a special folder by its shell number (0 to 61), as the shell gives it, without an
/// added separator. Empty for a number the shell does not know or a folder that does not exist.
/// POSIX paths keep their `/`.
[[nodiscard]] std::u16string specialFolder(int id);

/// The system folder, without a trailing separator; empty when the system does not tell.
[[nodiscard]] std::u16string systemFolder();

}  // namespace quendal::platform
