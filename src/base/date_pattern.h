// Dates by a pattern, the same in both homes; only the locale's texts differ.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace quendal {

/// Writes the text of a locale item (platform numbers) into `out`, cut to its size, and returns
/// the length; 0 when there is no such item.
using LocaleItemReader = std::size_t (*)(std::uint32_t item, std::span<char16_t> out);

/// What `formatDate` promises, with the texts of `locale`. Only the items that the pattern needs
/// are read, each once.
[[nodiscard]] std::u16string formatDatePattern(double date, std::u16string_view pattern,
                                               LocaleItemReader locale);

}  // namespace quendal
