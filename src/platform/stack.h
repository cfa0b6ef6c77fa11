// How deep values may nest on the calling thread.
#pragma once

#include <cstddef>

namespace quendal::platform {

/// Bytes of the calling thread's stack below the caller that are not in use. The greatest number
/// when the system does not tell.
[[nodiscard]] std::size_t remainingStack() noexcept;

/// How many levels of arrays and dictionaries within one another the calling thread can make and
/// afterwards walk and free, with the stack that it has left. At least 1,000 where the system frees
/// nested values without recursion and 160 KiB are left; see each system's own bound.
[[nodiscard]] std::size_t nestingThatFits() noexcept;

}  // namespace quendal::platform
