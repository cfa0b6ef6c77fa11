#include "functions/pumping_wait.h"

#include <limits>

#include "platform/clock.h"
#include "platform/messages.h"

namespace quendal {
namespace {

constexpr bool fits(std::int64_t value) noexcept {
  return value >= std::numeric_limits<std::int32_t>::min() &&
         value <= std::numeric_limits<std::int32_t>::max();
}

}  // namespace

std::optional<std::int32_t> remainingTime(std::int32_t remaining, std::int32_t start,
                                          std::int32_t now) noexcept {
  const std::int64_t difference = std::int64_t{remaining} - now;
  // Deliberate: it counts as an overflow even where the sum would fit again.
  if (!fits(difference) || !fits(difference + start)) return std::nullopt;
  return static_cast<std::int32_t>(difference + start);
}

void pumpingWait(std::int32_t milliseconds) {
  std::int32_t start = platform::tickCount();
  for (std::optional<std::int32_t> remaining = milliseconds;;) {
    const auto timeout = static_cast<std::uint32_t>(*remaining);
    if (platform::waitForMessage(timeout) == platform::WaitResult::TimedOut) return;
    platform::pumpMessages();
    const std::int32_t now = platform::tickCount();
    remaining = remainingTime(*remaining, start, now);
    if (!remaining || *remaining < 0) return;
    start = now;
  }
}

}  // namespace quendal
