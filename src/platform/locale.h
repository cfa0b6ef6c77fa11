// The user's regional settings and the texts that follow them. On POSIX they are those of the
// environment (LC_ALL, LC_TIME and the like, LANG) when first asked for; "C" and locales that are
// not installed read as English (United States).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quendal::platform {

/// One item of the user's default locale by its platform number (0x0E decimal separator, 0x44
/// first abbreviated month name, ...), at most 98 characters. Empty when there is no such item.
[[nodiscard]] std::u16string localeText(std::uint32_t item);

/// A date by a pattern of dd, MMM, yyyy, HH, nn, ss and literal text; ":" stands for the locale's
/// time separator and MMM for its abbreviated month name. `date` is days since 30 December 1899,
/// taken to the nearest second.
/// Empty when the date cannot be represented (year below 100 or above 9999).
[[nodiscard]] std::u16string formatDate(double date, std::u16string_view pattern);

/// A number with that many decimals, grouped, in the locale's form. A half is rounded away from
/// zero, as the platform's own number format does, which also shows no more than 15 significant
/// digits. Empty for infinities and not-a-number.
[[nodiscard]] std::u16string formatNumber(double value, int decimals);

/// Upper and lower case, character by character; characters without the other case stay.
[[nodiscard]] std::u16string upperCase(std::u16string_view text);
[[nodiscard]] std::u16string lowerCase(std::u16string_view text);

}  // namespace quendal::platform
