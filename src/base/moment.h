// The parts of an automation date.
#pragma once

#include <optional>

namespace quendal {

struct Moment {
  int year = 0;
  unsigned month = 0;  // 1 to 12
  unsigned day = 0;
  unsigned weekday = 0;  // 1 to 7, Sunday is 1
  unsigned hour = 0;
  unsigned minute = 0;
  unsigned second = 0;
};

/// Takes a date (days since 30 December 1899) apart, to the nearest second. Nothing for what is no
/// date: a year below 100 or above 9999, or not-a-number.
[[nodiscard]] std::optional<Moment> momentOf(double date) noexcept;

}  // namespace quendal
