// Automation dates: days since 30 December 1899 with the time of day as the fraction. Before that
// day the fraction still counts forward from midnight: -1.25 is 29 December 1899, 06:00.
#pragma once

#include <optional>

namespace quendal {

inline constexpr int kSecondsPerDay = 86400;

/// The parts of a date.
struct Moment {
  int year = 0;
  unsigned month = 0;  // 1 to 12
  unsigned day = 0;
  unsigned weekday = 0;  // 1 to 7, Sunday is 1
  unsigned hour = 0;
  unsigned minute = 0;
  unsigned second = 0;
};

/// True for what stands for a moment in the years 100 to 9999; not for not-a-number.
[[nodiscard]] bool isDate(double date) noexcept;

/// Takes a date apart, to the nearest second. Nothing for what is no date, or rounds into the year
/// 10000.
[[nodiscard]] std::optional<Moment> momentOf(double date) noexcept;

/// Days since 30 December 1899; nothing for a day that the calendar of the years 100 to 9999 does
/// not have. Month and day count from 1.
[[nodiscard]] std::optional<int> dayOf(int year, int month, int day) noexcept;

/// The date of a day and a time of that day in seconds.
[[nodiscard]] double dateOf(int day, int seconds) noexcept;

/// The date of the fields of a clock, which show a day that there is.
[[nodiscard]] double dateSerial(int year, int month, int day, int hour, int minute,
                                int second) noexcept;

}  // namespace quendal
