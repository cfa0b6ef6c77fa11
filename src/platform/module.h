// The library's own file.
#pragma once

#include <string>

namespace quendal::platform {

/// Full path of the file this code was loaded from; empty when the system does not tell.
[[nodiscard]] std::u16string ownModulePath();

}  // namespace quendal::platform
