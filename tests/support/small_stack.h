// Work on a thread with as little stack as a server's worker threads have.
#pragma once

#include <functional>

namespace quendal::test {

/// Runs `work` to its end on a new thread with a stack of 256 KiB, which is an apartment. (Wine
/// gives every thread at least 1 MiB.)
void onSmallStack(const std::function<void()>& work);

}  // namespace quendal::test
