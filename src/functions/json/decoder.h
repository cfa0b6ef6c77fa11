// JSON text into values.
#pragma once

#include <quendal/variant.h>

#include <string_view>

namespace quendal::json {

/// The value at the start of a JSON text: objects as dictionaries, arrays as zero-based arrays of
/// Variants, numbers as doubles. What follows the first value is not looked at, and neither are
/// some mistakes in it: see docs/behaviour.md. Takes time in proportion to the text.
///
/// Raises 8732 with one of a few fixed descriptions for text that is no JSON, 457 for a key that an
/// object has twice, 13 for a "\u" without hexadecimal digits, 6 for a number beyond a double, 28
/// for nesting beyond what fits the thread's stack.
[[nodiscard]] Variant decode(std::u16string_view text);

}  // namespace quendal::json
