// Objects with a class name of their own.
#pragma once

#include <quendal/object.h>

#include <functional>
#include <string_view>

namespace quendal::test {

/// An object that does what `inner` does and whose type information bears `className`; asked for
/// that, it first runs a step.
[[nodiscard]] Object named(std::u16string_view className, const Object& inner,
                           std::function<void()> whenAsked = {});

}  // namespace quendal::test
