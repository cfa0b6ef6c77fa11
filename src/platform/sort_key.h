// Keys for sorting many texts.
#pragma once

#include <string>
#include <string_view>

namespace quendal::platform {

/// Appends the key of a text: compared unit by unit, keys are in the order that their texts have in
/// the user's locale without regard to case. On POSIX that is the order of lower-case UTF-16 units.
void appendSortKey(std::u16string_view text, std::u16string& keys);

}  // namespace quendal::platform
