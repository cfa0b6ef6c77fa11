// Numbers in the locale's form, the same in both homes; only the locale's texts differ.
#pragma once

#include <string>

#include "base/date_pattern.h"

namespace quendal {

/// What `formatNumber` promises, with the texts of `locale`.
[[nodiscard]] std::u16string formatNumberPattern(double value, int decimals,
                                                 LocaleItemReader locale);

}  // namespace quendal
