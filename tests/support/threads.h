// The threads that tests run on.
#pragma once

#include <functional>

namespace quendal::test {

/// While it lives, the calling thread is an apartment in which objects can be created.
struct ApartmentThread {
  ApartmentThread();
  ~ApartmentThread();
};

/// Runs `work` to its end on a new thread with a stack of 256 KiB, as little as a server's worker
/// threads have, which is an apartment. (Wine gives every thread at least 1 MiB.)
void onSmallStack(const std::function<void()>& work);

}  // namespace quendal::test
