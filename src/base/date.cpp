#include "base/date.h"

#include <chrono>
#include <cmath>

namespace quendal {
namespace {

namespace chrono = std::chrono;

constexpr chrono::sys_days kDayZero{chrono::year{1899} / chrono::December / 30};
constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;

constexpr int daysUntil(chrono::year_month_day date) noexcept {
  return static_cast<int>((chrono::sys_days{date} - kDayZero).count());
}
constexpr int kFirstDay = daysUntil(chrono::year{kFirstYear} / chrono::January / 1);
constexpr int kLastDay = daysUntil(chrono::year{kLastYear} / chrono::December / 31);

}  // namespace

bool isDate(double date) noexcept { return date > kFirstDay - 1 && date < kLastDay + 1; }

std::optional<Moment> momentOf(double date) noexcept {
  if (!isDate(date)) return std::nullopt;
  const double whole = std::trunc(date);
  auto day = static_cast<int>(whole);
  auto seconds = static_cast<unsigned>(std::lround(std::fabs(date - whole) * kSecondsPerDay));
  if (seconds == kSecondsPerDay) {
    if (day == kLastDay) return std::nullopt;
    ++day;
    seconds = 0;
  }
  const chrono::sys_days place = kDayZero + chrono::days{day};
  const chrono::year_month_day civil{place};
  return Moment{static_cast<int>(civil.year()),
                static_cast<unsigned>(civil.month()),
                static_cast<unsigned>(civil.day()),
                chrono::weekday{place}.c_encoding() + 1,
                seconds / 3600,
                seconds / 60 % 60,
                seconds % 60};
}

std::optional<int> dayOf(int year, int month, int day) noexcept {
  constexpr int kMostMonths = 12, kMostDays = 31;  // the calendar's own types keep a byte of each
  if (year < kFirstYear || year > kLastYear || month < 1 || month > kMostMonths || day < 1 ||
      day > kMostDays)
    return std::nullopt;
  const chrono::year_month_day civil{chrono::year{year},
                                     chrono::month{static_cast<unsigned>(month)},
                                     chrono::day{static_cast<unsigned>(day)}};
  if (!civil.ok()) return std::nullopt;
  return daysUntil(civil);
}

double dateOf(int day, int seconds) noexcept {
  const double time = static_cast<double>(seconds) / kSecondsPerDay;
  return day < 0 ? day - time : day + time;
}

double dateSerial(int year, int month, int day, int hour, int minute, int second) noexcept {
  return dateOf(dayOf(year, month, day).value_or(0), (hour * 60 + minute) * 60 + second);
}

}  // namespace quendal
