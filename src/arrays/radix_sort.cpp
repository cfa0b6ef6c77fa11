#include "arrays/radix_sort.h"

#include <algorithm>
#include <array>
#include <bit>
#include <memory>
#include <utility>

namespace quendal {
namespace {

constexpr std::uint64_t kSign = 1ULL << 63;
constexpr std::size_t kMany = 500;  // from here on the tables are worth their making
constexpr std::size_t kDigits = sizeof(std::uint64_t);

constexpr std::size_t digitOf(std::uint64_t key, std::size_t place) noexcept {
  return (key >> (8 * place)) & 0xFF;
}

}  // namespace

std::uint64_t radixKey(double number) noexcept {
  const auto bits = std::bit_cast<std::uint64_t>(number);
  return (bits & kSign) != 0 ? ~bits : bits | kSign;
}

double numberOfRadixKey(std::uint64_t key) noexcept {
  return std::bit_cast<double>((key & kSign) != 0 ? key ^ kSign : ~key);
}

// The lowest byte first; each pass keeps the order of those before it.
void sortKeys(std::vector<std::uint64_t>& keys) {
  if (keys.size() < kMany) {
    std::ranges::sort(keys);
    return;
  }
  std::array<std::array<std::size_t, 256>, kDigits> counts{};
  for (const std::uint64_t key : keys) {
    for (std::size_t place = 0; place < kDigits; ++place) ++counts[place][digitOf(key, place)];
  }
  const auto other = std::make_unique_for_overwrite<std::uint64_t[]>(keys.size());
  std::uint64_t* from = keys.data();
  std::uint64_t* to = other.get();
  for (std::size_t place = 0; place < kDigits; ++place) {
    auto& positions = counts[place];
    if (std::ranges::find(positions, keys.size()) != positions.end()) continue;  // alike in all
    std::size_t start = 0;
    for (std::size_t& position : positions) start += std::exchange(position, start);
    for (std::size_t i = 0; i < keys.size(); ++i)
      to[positions[digitOf(from[i], place)]++] = from[i];
    std::swap(from, to);
  }
  if (from != keys.data()) std::copy_n(from, keys.size(), keys.data());
}

}  // namespace quendal
