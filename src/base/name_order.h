// The order of names in containers.
#pragma once

#include <algorithm>
#include <string_view>

#include "base/characters.h"

namespace quendal {

/// Orders names without regard to the case of A to Z.
struct NameOrder {
  using is_transparent = void;
  bool operator()(std::u16string_view a, std::u16string_view b) const noexcept {
    return std::ranges::lexicographical_compare(a, b, {}, asciiLower, asciiLower);
  }
};

}  // namespace quendal
