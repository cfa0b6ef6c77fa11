// The clocks of the machine.
#pragma once

#include <cstdint>

namespace quendal::platform {

/// Current local date and time as days since 30 December 1899, whole seconds.
[[nodiscard]] double localNow() noexcept;

/// Milliseconds (0 to 999) of the system clock in universal time.
[[nodiscard]] int utcMilliseconds() noexcept;

/// Milliseconds since system start, modulo 2^32, as a signed number.
[[nodiscard]] std::int32_t tickCount() noexcept;

}  // namespace quendal::platform
