// Small text tools on UTF-16.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/characters.h"

namespace quendal {

inline constexpr std::u16string_view kLineEnd = u"\r\n";

/// Equality that takes A to Z and a to z as the same.
[[nodiscard]] bool equalNoCase(std::u16string_view a, std::u16string_view b) noexcept;

/// Whether `part` occurs in `text`, taking A to Z and a to z as the same.
[[nodiscard]] bool containsNoCase(std::u16string_view text, std::u16string_view part) noexcept;

/// Plain decimal, with zeros in front up to a number of digits; a sign stands before them.
[[nodiscard]] std::u16string decimalText(std::int64_t value, std::size_t digits = 1);

/// The last `digits` hexadecimal digits of a number, in upper case.
[[nodiscard]] std::u16string hexText(std::uint64_t value, std::size_t digits);

/// `text` with every occurrence of `what` replaced, from the start on.
[[nodiscard]] std::u16string replaceAll(std::u16string_view text, std::u16string_view what,
                                        std::u16string_view by);

/// Leading and trailing blanks (U+0020 only) removed.
[[nodiscard]] std::u16string_view trimBlanks(std::u16string_view text) noexcept;

}  // namespace quendal
