// Values of every kind, as the input says.
#pragma once

#include <cstdint>

#include "boundary/page.h"

namespace quendal::fuzz {

/// Anything that a variable can hold, references included; those lead to the page's variables.
/// `depth` is that of the containers around it.
[[nodiscard]] Variant anyValue(Page& page, int depth = 0);
/// As anyValue, but made anew: no copy of what a variable holds.
[[nodiscard]] Variant freshValue(Page& page, int depth = 0);
/// A value of a type without references; an array for an array's type, maybe unallocated.
[[nodiscard]] Variant valueOf(Page& page, VARTYPE type);

[[nodiscard]] std::int32_t anyInt(Page& page);
[[nodiscard]] double anyDouble(Page& page);
/// May be null.
[[nodiscard]] Text anyText(Page& page);
/// An array of Variants with one dimension and a few elements.
[[nodiscard]] Variant plainArray(Page& page, int depth = 0);
[[nodiscard]] Variant dictionary(Page& page, int depth = 0);

[[nodiscard]] std::size_t elementCount(const SAFEARRAY& array) noexcept;

}  // namespace quendal::fuzz
