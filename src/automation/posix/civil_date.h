// Calendar arithmetic on automation dates: days since 30 December 1899 as a double with the time
// of day as the fraction. Before that day the fraction still counts forward from midnight: -1.25
// is 29 December 1899, 06:00.
#pragma once

#include <chrono>
#include <cmath>
#include <cstdint>

namespace quendal::automation {

constexpr std::int32_t kFirstDay = -657434;  // 1 January 100
constexpr std::int32_t kLastDay = 2958465;   // 31 December 9999
constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;
constexpr std::int32_t kSecondsPerDay = 86400;

struct CivilDate {
  int year = 0;
  int month = 0;  // 1 to 12
  int day = 0;
};

/// A moment's parts, to the second.
struct DateParts {
  std::int32_t days = 0;     // since 30 December 1899
  std::int32_t seconds = 0;  // since midnight
  CivilDate date;
  int hour = 0;
  int minute = 0;
  int second = 0;
};

namespace detail {
constexpr std::chrono::sys_days kDayZero{std::chrono::year{1899} / 12 / 30};
}  // namespace detail

/// True for a day that the calendar has, in the years 100 to 9999.
[[nodiscard]] constexpr bool isCivilDate(const CivilDate& date) noexcept {
  if (date.year < kFirstYear || date.year > kLastYear) return false;
  if (date.month < 1 || date.month > 12 || date.day < 1 || date.day > 31) return false;
  return std::chrono::year_month_day(std::chrono::year{date.year} / date.month / date.day).ok();
}

/// Days since 30 December 1899 of a date for which `isCivilDate` holds.
[[nodiscard]] constexpr std::int32_t daysOf(const CivilDate& date) noexcept {
  const std::chrono::sys_days day{std::chrono::year{date.year} / date.month / date.day};
  return static_cast<std::int32_t>((day - detail::kDayZero).count());
}

/// The date of a day from `kFirstDay` to `kLastDay`.
[[nodiscard]] constexpr CivilDate dateOf(std::int32_t days) noexcept {
  const std::chrono::year_month_day civil{detail::kDayZero + std::chrono::days{days}};
  return {static_cast<int>(civil.year()), static_cast<int>(static_cast<unsigned>(civil.month())),
          static_cast<int>(static_cast<unsigned>(civil.day()))};
}

/// The double of a day and a time of day in seconds.
[[nodiscard]] inline double joinDate(std::int32_t days, std::int32_t seconds) noexcept {
  const double time = static_cast<double>(seconds) / kSecondsPerDay;
  return days < 0 ? days - time : days + time;
}

/// True for a double that stands for a moment in the years 100 to 9999; not for not-a-number.
[[nodiscard]] inline bool isDate(double date) noexcept {
  return date > kFirstDay - 1 && date < kLastDay + 1;
}

/// Splits a date, rounding to the nearest second. False when `isDate` does not hold.
[[nodiscard]] inline bool splitDate(double date, DateParts& parts) noexcept {
  if (!isDate(date)) return false;
  const double whole = std::trunc(date);
  auto days = static_cast<std::int32_t>(whole);
  auto seconds = static_cast<std::int32_t>(std::lround(std::fabs(date - whole) * kSecondsPerDay));
  if (seconds == kSecondsPerDay) {
    if (days == kLastDay) {
      seconds = kSecondsPerDay - 1;  // the last moment there is
    } else {
      seconds = 0;
      ++days;
    }
  }
  parts = {days, seconds, dateOf(days), seconds / 3600, seconds / 60 % 60, seconds % 60};
  return true;
}

}  // namespace quendal::automation
