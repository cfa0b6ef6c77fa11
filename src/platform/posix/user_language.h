// The language of the user's locale, by its identifier.
#pragma once

#include <cstdint>

namespace quendal::platform {

/// 0x0409, English (United States), when the locale does not tell.
[[nodiscard]] std::uint16_t userLanguage();

}  // namespace quendal::platform
