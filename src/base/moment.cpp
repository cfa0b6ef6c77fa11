#include "base/moment.h"

#include <chrono>
#include <cmath>
#include <cstdint>

namespace quendal {
namespace {

constexpr std::int32_t kFirstDay = -657434;  // 1 January 100
constexpr std::int32_t kLastDay = 2958465;   // 31 December 9999
constexpr std::int32_t kSecondsPerDay = 86400;

}  // namespace

// Before the epoch the fraction still counts forward from midnight.
std::optional<Moment> momentOf(double date) noexcept {
  if (!(date > kFirstDay - 1 && date < kLastDay + 1)) return std::nullopt;  // not-a-number too
  const double whole = std::trunc(date);
  auto day = static_cast<std::int32_t>(whole);
  auto seconds = static_cast<std::int32_t>(std::lround(std::fabs(date - whole) * kSecondsPerDay));
  if (seconds == kSecondsPerDay) {
    seconds = 0;
    ++day;
  }
  if (day < kFirstDay || day > kLastDay) return std::nullopt;

  using namespace std::chrono;
  const sys_days place{sys_days{year{1899} / December / 30} + days{day}};
  const year_month_day civil{place};
  const auto ofDay = static_cast<unsigned>(seconds);
  return Moment{static_cast<int>(civil.year()),
                static_cast<unsigned>(civil.month()),
                static_cast<unsigned>(civil.day()),
                weekday{place}.c_encoding() + 1,
                ofDay / 3600,
                ofDay / 60 % 60,
                ofDay % 60};
}

}  // namespace quendal
