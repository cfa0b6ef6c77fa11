#include "platform/clock.h"

#include <cstdint>
#include <ctime>

#include "base/date.h"

namespace quendal::platform {
namespace {

constexpr std::int64_t kMillisecondsPerSecond = 1000;
constexpr std::int64_t kNanosecondsPerMillisecond = 1'000'000;

timespec read(clockid_t clock) noexcept {
  timespec now{};
  ::clock_gettime(clock, &now);
  return now;
}

}  // namespace

double localNow() noexcept {
  const time_t now = read(CLOCK_REALTIME).tv_sec;
  tm local{};
  if (::localtime_r(&now, &local) == nullptr) ::gmtime_r(&now, &local);
  return dateSerial(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                    local.tm_min, local.tm_sec);
}

int utcMilliseconds() noexcept {
  return static_cast<int>(read(CLOCK_REALTIME).tv_nsec / kNanosecondsPerMillisecond);
}

std::int32_t tickCount() noexcept {
  const timespec up = read(CLOCK_BOOTTIME);
  const std::int64_t milliseconds =
      up.tv_sec * kMillisecondsPerSecond + up.tv_nsec / kNanosecondsPerMillisecond;
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(milliseconds));
}

}  // namespace quendal::platform
