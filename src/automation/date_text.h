// Dates that people write.
#pragma once

#include <string_view>

namespace quendal::automation {

/// Reads a date, a time of day, or both, into days since 30 December 1899; a time alone is the
/// fraction. False for any other text, a number alone included, and `date` is not to be read then.
/// On Windows these are the layouts that the system knows in the user's locale, on POSIX those of
/// an English (United States) locale:
///
/// Dates are three numbers (month/day/year, or year first when the first is too large for
/// another; month and day swap when only that makes a date), two (month and day of this year, or
/// month and year), or a month's name with one or two numbers in any order. A weekday's name is
/// ignored. Years of one or two digits are 2000 to 2029 and 1930 to 1999. Times are h:mm, h:mm:ss
/// and h, the last only with AM or PM. `2005-03-05T14:30:00` is read too.
[[nodiscard]] bool parseDate(std::u16string_view text, double& date);

}  // namespace quendal::automation
