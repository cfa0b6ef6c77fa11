// Type information for objects that are called by name alone.
#pragma once

#include <quendal/automation.h>

#include <string_view>

namespace quendal::automation {

/// Type information that bears a name and tells of no members. The caller owns the reference;
/// null on failure.
[[nodiscard]] HRESULT hostType(std::u16string_view name, ITypeInfo** info) noexcept;

}  // namespace quendal::automation
