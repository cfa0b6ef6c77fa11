#include "platform/messages.h"

#include <syslog.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <ctime>
#include <exception>
#include <string>

#include "base/utf8.h"

namespace quendal::platform {
namespace {

constexpr long kNanosecondsPerSecond = 1'000'000'000;
constexpr long kNanosecondsPerMillisecond = 1'000'000;

}  // namespace

void pumpMessages() noexcept {}

// Threads have no queue here, so nothing ever arrives.
WaitResult waitForMessage(std::uint32_t milliseconds) noexcept {
  timespec end{};
  ::clock_gettime(CLOCK_MONOTONIC, &end);
  end.tv_sec += static_cast<time_t>(milliseconds / 1000);
  end.tv_nsec += static_cast<long>(milliseconds % 1000) * kNanosecondsPerMillisecond;
  if (end.tv_nsec >= kNanosecondsPerSecond) {
    ++end.tv_sec;
    end.tv_nsec -= kNanosecondsPerSecond;
  }
  while (::clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &end, nullptr) == EINTR) {
  }
  return WaitResult::TimedOut;
}

void systemLog(std::u16string_view message) noexcept {
  try {
    std::string line = toUtf8(message);
    std::replace_if(
        line.begin(), line.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    // Without openlog, which would change the name under which the host process logs.
    ::syslog(LOG_USER | LOG_NOTICE, "QUENDAL_REPORTS_ASP: %s", line.c_str());
  } catch (const std::exception&) {
    // Out of memory: the line is not worth more.
  }
}

}  // namespace quendal::platform
