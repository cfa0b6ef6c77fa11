#include "platform/stack.h"

#include <pthread.h>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace quendal::platform {
namespace {

// The stack's lowest address. Asking the system reads a file for the first thread, so the answer is
// kept; it holds for the thread's life.
std::uintptr_t lowestAddress() noexcept {
  constinit thread_local std::uintptr_t known = 0;
  if (known != 0) return known;
  pthread_attr_t attributes;
  if (pthread_getattr_np(pthread_self(), &attributes) != 0) return 0;
  void* lowest = nullptr;
  std::size_t size = 0;
  if (pthread_attr_getstack(&attributes, &lowest, &size) == 0)
    known = reinterpret_cast<std::uintptr_t>(lowest);
  pthread_attr_destroy(&attributes);
  return known;
}

}  // namespace

std::size_t remainingStack() noexcept {
  const std::uintptr_t lowest = lowestAddress();
  const auto here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
  if (lowest == 0 || here < lowest) return std::numeric_limits<std::size_t>::max();
  return here - lowest;
}

// Neither the library nor its automation runtime uses stack for nested values. The bound is for
// the hosts, which walk what they receive by calls within calls, and for the memory that a text of
// nothing but brackets would take.
std::size_t nestingThatFits() noexcept {
  constexpr std::size_t kBytesPerLevel = 128;
  constexpr std::size_t kMostLevels = 100'000;
  return std::min(remainingStack() / kBytesPerLevel, kMostLevels);
}

}  // namespace quendal::platform
