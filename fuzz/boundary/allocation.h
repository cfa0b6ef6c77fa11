// Memory that cannot be had: operator new, and the C library's functions that the program is linked
// with wrapped, ask here first.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quendal::fuzz {

/// What of the memory that is asked for is refused, while `active`.
struct AllocationRule {
  bool active = false;
  std::size_t largest = SIZE_MAX;           // bytes
  std::uint64_t requests = 0;               // counted while active
  std::uint64_t firstRefused = UINT64_MAX;  // from this one of them on
  std::uint64_t lastRefused = UINT64_MAX;

  [[nodiscard]] bool refuses(std::size_t size) noexcept {
    if (!active) return false;
    ++requests;
    return size > largest || (requests >= firstRefused && requests <= lastRefused);
  }
};
extern AllocationRule allocationRule;

/// While it lives the rule holds or does not: it does in the library, not in the harness.
class AllocationScope {
 public:
  explicit AllocationScope(bool active) noexcept : was_(allocationRule.active) {
    allocationRule.active = active;
  }
  AllocationScope(const AllocationScope&) = delete;
  AllocationScope& operator=(const AllocationScope&) = delete;
  ~AllocationScope() { allocationRule.active = was_; }

 private:
  bool was_;
};

}  // namespace quendal::fuzz
