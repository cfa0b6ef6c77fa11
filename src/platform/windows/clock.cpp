#include "platform/clock.h"

#include <quendal/automation.h>

#include <cstdint>

#include "base/date.h"

namespace quendal::platform {

double localNow() noexcept {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  return dateSerial(now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond);
}

int utcMilliseconds() noexcept {
  SYSTEMTIME now{};
  GetSystemTime(&now);
  return now.wMilliseconds;
}

std::int32_t tickCount() noexcept { return static_cast<std::int32_t>(GetTickCount()); }

}  // namespace quendal::platform
