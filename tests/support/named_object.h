// Objects with a class name of their own.
#pragma once

#include <quendal/object.h>

#include <string_view>

namespace quendal::test {

/// An object that does what `inner` does and whose type information bears `className`.
[[nodiscard]] Object named(std::u16string_view className, const Object& inner);

}  // namespace quendal::test
