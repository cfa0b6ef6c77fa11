#include "platform/sort_key.h"

#include <algorithm>

#include "base/characters.h"
#include "platform/locale.h"

namespace quendal::platform {

void appendSortKey(std::u16string_view text, std::u16string& keys) {
  const std::size_t start = keys.size();
  keys += text;
  const auto own = keys.begin() + static_cast<std::ptrdiff_t>(start);
  const auto beyondAscii = std::find_if_not(own, keys.end(), isAscii<char16_t>);
  std::transform(own, beyondAscii, own, asciiLower);
  if (beyondAscii == keys.end()) return;
  const auto plain = static_cast<std::size_t>(beyondAscii - own);
  keys.replace(start + plain, keys.npos, lowerCase(text.substr(plain)));
}

}  // namespace quendal::platform
