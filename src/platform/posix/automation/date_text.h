// Dates as text, in the forms of an English (United States) locale.
#pragma once

#include <quendal/automation.h>

#include <string_view>

#include "platform/posix/automation/number_text.h"

namespace quendal::platform {

/// Reads a date, a time of day, or both in either order. False for any other text, numbers alone
/// included, and for dates outside the years 100 to 9999.
///
/// Dates are three numbers (month/day/year, or year first when the first is too large for
/// another; month and day swap when only that makes a date), two (month and day of this year, or
/// month and year), or a month's name with one or two numbers in any order. A weekday's name is
/// ignored. Years of one or two digits are 2000 to 2029 and 1930 to 1999. Times are h:mm, h:mm:ss
/// and h, the last only with AM or PM. `2005-03-05T14:30:00` is read too.
[[nodiscard]] bool parseDateText(std::u16string_view text, double& date) noexcept;

/// "3/5/2005 2:07:09 PM"; the date alone at midnight, the time alone on day 0. False when the
/// value is no date.
[[nodiscard]] bool writeDateText(double date, NumberText& text) noexcept;

}  // namespace quendal::platform
