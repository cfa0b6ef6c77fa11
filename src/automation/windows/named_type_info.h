// Type information under another name.
#pragma once

#include <memory>
#include <string_view>

#include "automation/reference.h"

namespace quendal::automation {

/// Wraps type information so that it bears `name`; every other question goes to `info`. The
/// caller owns the reference. Throws std::bad_alloc.
[[nodiscard]] ITypeInfo* nameTypeInfo(Reference<ITypeInfo> info, std::u16string_view name);

}  // namespace quendal::automation
