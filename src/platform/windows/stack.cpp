#include "platform/stack.h"

#include <quendal/automation.h>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace quendal::platform {

std::size_t remainingStack() noexcept {
  // The thread's stack is one reservation, whose lowest address tells how far it can grow.
  MEMORY_BASIC_INFORMATION region{};
  const auto* here = static_cast<const char*>(__builtin_frame_address(0));
  if (VirtualQuery(here, &region, sizeof(region)) == 0)
    return std::numeric_limits<std::size_t>::max();
  return static_cast<std::size_t>(here - static_cast<const char*>(region.AllocationBase));
}

// The system copies and frees nested arrays and dictionaries by calls within calls, long after the
// library has handed them out, perhaps deeper in the stack than now. How much a level takes depends
// on the system's version; some 340 bytes were seen on x64.
std::size_t nestingThatFits() noexcept {
  constexpr std::size_t kBytesPerLevel = 128 * sizeof(void*);
  constexpr std::size_t kSetAside = 16 * 1024;  // guard pages, and the way there
  constexpr std::size_t kMostLevels = 4096;
  const std::size_t left = remainingStack();
  return left <= kSetAside ? 0 : std::min((left - kSetAside) / kBytesPerLevel, kMostLevels);
}

}  // namespace quendal::platform
