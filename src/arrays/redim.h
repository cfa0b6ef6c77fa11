// What the host does when a page re-dimensions an array, with the errors the page would get.
#pragma once

#include <cstdint>

#include "core/variant_ref.h"

namespace quendal {

/// Raises 9 for an array of several dimensions, as an access with one index does.
void requireOneDimension(SAFEARRAY* array);

/// Raises 10 when the bounds cannot be changed: the array is fixed, or locked by a loop over it.
void requireResizable(const SAFEARRAY& array);

/// Changes the number of elements, keeping the contents and the lower bound. New elements are
/// Empty, zero or null. Raises 9, also for an upper bound beyond 32 bits, 10 or 7 and then has
/// changed nothing.
void resize(SAFEARRAY* array, std::size_t count);

/// `ReDim Preserve array(0 To upper)`. Raises 9 when `upper` is below 0, and for an array of
/// several dimensions or with another lower bound, which cannot change; 10 and 7 as `resize`.
void redimPreserve(SAFEARRAY* array, std::int64_t upper);
/// The same of a variable's array; an unallocated one is created with its element type.
void redimPreserve(VariantRef& variable, std::int64_t upper);

}  // namespace quendal
