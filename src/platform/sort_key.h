// Keys for sorting many texts.
#pragma once

#include <string>
#include <string_view>

namespace quendal::platform {

/// Appends the key of a text: compared unit by unit, keys are in the order in which
/// compareTextNoCase puts their texts.
void appendSortKey(std::u16string_view text, std::u16string& keys);

}  // namespace quendal::platform
