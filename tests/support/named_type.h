// Type information that bears a name.
#pragma once

#include <quendal/automation.h>

#include <string_view>

namespace quendal::test {

/// The caller owns the reference.
HRESULT namedType(std::u16string_view name, ITypeInfo** info);

}  // namespace quendal::test
