#include "platform/sort_key.h"

#include <quendal/automation.h>

#include <limits>
#include <vector>

namespace quendal::platform {
namespace {

int makeKey(std::u16string_view text, std::vector<char>& key) noexcept {
  return LCMapStringW(LOCALE_USER_DEFAULT, LCMAP_SORTKEY | NORM_IGNORECASE, oleText(text.data()),
                      static_cast<int>(text.size()), reinterpret_cast<wchar_t*>(key.data()),
                      static_cast<int>(key.size()));
}

}  // namespace

// The system's keys are bytes that end in 0. Two of them make one unit.
void appendSortKey(std::u16string_view text, std::u16string& keys) {
  constexpr std::size_t kLongest = std::numeric_limits<int>::max() / 16;
  if (text.empty()) return;
  if (text.size() > kLongest) {
    keys += text;
    return;
  }
  std::vector<char> key(text.size() * 6 + 32);
  int size = makeKey(text, key);
  if (size == 0) {
    std::vector<char> none;
    const int needed = makeKey(text, none);
    key.resize(static_cast<std::size_t>(needed));
    size = needed == 0 ? 0 : makeKey(text, key);
  }
  if (size == 0) {
    keys += text;  // unlike every other key, but in some order
    return;
  }
  key.resize(static_cast<std::size_t>(size + size % 2), 0);
  for (std::size_t i = 0; i < key.size(); i += 2) {
    const auto high = static_cast<unsigned char>(key[i]);
    const auto low = static_cast<unsigned char>(key[i + 1]);
    keys += static_cast<char16_t>(high << 8 | low);
  }
}

}  // namespace quendal::platform
