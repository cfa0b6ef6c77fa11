// The state of one thread.
#pragma once

#include <memory>

namespace quendal::platform {

/// What is kept for a thread. Destroyed when the thread ends, when other modules may be gone
/// already: the destructor calls none of them.
class ThreadState {
 public:
  ThreadState() = default;
  ThreadState(const ThreadState&) = delete;
  ThreadState& operator=(const ThreadState&) = delete;
  virtual ~ThreadState() = default;
};

/// The calling thread's own; null until it is set, and where no thread can have one.
[[nodiscard]] ThreadState* threadState() noexcept;

/// Keeps a state for the calling thread, which must have none. Throws std::bad_alloc when the
/// system has no room for it.
void setThreadState(std::unique_ptr<ThreadState> state);

}  // namespace quendal::platform
