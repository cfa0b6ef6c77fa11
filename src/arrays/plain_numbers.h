// The usual case of sorting: numbers of one type.
#pragma once

#include "core/array_view.h"

namespace quendal {

/// Sorts elements that all hold numbers of one type and are as good as doubles: any but 64-bit
/// integers, currency and decimals. Returns false, and has changed nothing, when they are not.
[[nodiscard]] bool sortPlainNumbers(const ArrayView& array, std::size_t first, std::size_t count,
                                    bool descending);

}  // namespace quendal
