#include "platform/stack.h"

#include <quendal/automation.h>

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
// library has handed them out. A level was seen to take up to 340 bytes on x64, for arrays that are
// copied into a dictionary; the bound leaves some for the way there.
std::size_t nestingThatFits() noexcept {
  constexpr std::size_t kBytesPerLevel = 48 * sizeof(void*);
  return remainingStack() / kBytesPerLevel;
}

}  // namespace quendal::platform
