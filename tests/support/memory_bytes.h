// A byte source over memory that keeps count of what is asked of it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/posix/byte_source.h"

namespace quendal::test {

class MemoryBytes final : public platform::ByteSource {
 public:
  /// The bytes must outlive the source.
  explicit MemoryBytes(std::span<const std::byte> bytes) : bytes_(bytes) {}

  std::size_t read(std::uint64_t offset, std::span<std::byte> into) noexcept override {
    bytesAsked_ += into.size();
    if (offset >= bytes_.size()) return 0;
    const auto rest = bytes_.subspan(static_cast<std::size_t>(offset));
    const std::size_t count = std::min(rest.size(), into.size());
    std::copy_n(rest.begin(), count, into.begin());
    return count;
  }

  [[nodiscard]] std::size_t bytesAsked() const noexcept { return bytesAsked_; }

 private:
  std::span<const std::byte> bytes_;
  std::size_t bytesAsked_ = 0;
};

}  // namespace quendal::test
