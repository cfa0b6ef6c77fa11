// A wait that keeps the calling thread's message queue serviced.
#pragma once

#include <cstdint>
#include <optional>

namespace quendal {

/// Waits, dispatching the thread's messages as they come; a message does not end the wait.
/// A negative number of milliseconds counts as 2^32 more (-1: no limit) until the first message,
/// which ends the wait.
void pumpingWait(std::int32_t milliseconds);

/// `remaining - now + start` in 32-bit steps in that order; nothing when a step overflows.
[[nodiscard]] std::optional<std::int32_t> remainingTime(std::int32_t remaining, std::int32_t start,
                                                        std::int32_t now) noexcept;

}  // namespace quendal
