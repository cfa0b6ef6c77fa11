// Dates that people write.
#pragma once

#include <string_view>

namespace quendal::platform {

/// Reads a date, a time of day, or both, into days since 30 December 1899; a time alone is the
/// fraction. False for any other text, a number alone included, and `date` is not to be read then.
/// On Windows these are the layouts that the system knows in the user's locale, on POSIX those of
/// an English (United States) locale.
[[nodiscard]] bool parseDate(std::u16string_view text, double& date);

}  // namespace quendal::platform
