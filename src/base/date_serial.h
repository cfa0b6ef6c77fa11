// Dates as automation counts them.
#pragma once

#include <chrono>

namespace quendal {

/// Days since 30 December 1899 with the time of day as the fraction, from the fields of a clock
/// (month and day from 1).
inline double dateSerial(int year, int month, int day, int hour, int minute, int second) noexcept {
  namespace ch = std::chrono;
  constexpr ch::sys_days kFirstDay = ch::year(1899) / ch::December / 30;
  const auto days = (ch::sys_days(ch::year(year) / month / day) - kFirstDay).count();
  return static_cast<double>(days) + ((hour * 60 + minute) * 60 + second) / 86400.0;
}

}  // namespace quendal
