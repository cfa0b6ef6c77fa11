// The bytes of one fuzz input, read as decisions.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace quendal::fuzz {

/// Behind the end everything is zero, which everywhere means the simple way that ends soon.
class Input {
 public:
  explicit Input(std::span<const std::uint8_t> bytes) noexcept : bytes_(bytes) {}

  [[nodiscard]] bool ended() const noexcept { return bytes_.empty(); }

  template <class T>
  T number() noexcept {
    T value{};
    const std::size_t size = std::min(sizeof value, bytes_.size());
    if (size > 0) std::memcpy(&value, bytes_.data(), size);
    bytes_ = bytes_.subspan(size);
    return value;
  }
  std::uint8_t byte() noexcept { return number<std::uint8_t>(); }
  /// 0 to `count` - 1, for a count up to 65536.
  std::size_t below(std::size_t count) noexcept {
    if (count < 2) return 0;
    return (count <= 256 ? byte() : number<std::uint16_t>()) % count;
  }
  /// True once in `count` times, and never behind the end.
  bool oneIn(std::size_t count) noexcept { return below(count) == count - 1; }

  template <class T, std::size_t N>
  const T& oneOf(const T (&choices)[N]) noexcept {
    return choices[below(N)];
  }

 private:
  std::span<const std::uint8_t> bytes_;
};

}  // namespace quendal::fuzz
