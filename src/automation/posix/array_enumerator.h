// Visiting the elements of an array one by one.
#pragma once

#include <quendal/automation.h>

namespace quendal::automation {

/// A new enumerator over the elements of a one-dimensional array of variants. The array belongs to
/// the enumerator from here on, on failure too.
[[nodiscard]] HRESULT enumerateArray(SAFEARRAY* taken, IUnknown** enumerator) noexcept;

}  // namespace quendal::automation
