#include "platform/thread_state.h"

#include <pthread.h>

#include <new>

namespace quendal::platform {
namespace {

void onThreadEnd(void* value) {
  const std::unique_ptr<ThreadState> state(static_cast<ThreadState*>(value));
}

pthread_key_t madeKey() {
  pthread_key_t key{};
  if (::pthread_key_create(&key, &onThreadEnd) != 0) throw std::bad_alloc();
  return key;
}

/// A key of the system's. Not `thread_local`, whose first use ends the process when memory is
/// short. The key is never given back, as the library stays loaded.
pthread_key_t ownKey() {
  static const pthread_key_t key = madeKey();  // tried again by the next call when it throws
  return key;
}

}  // namespace

ThreadState* threadState() noexcept {
  try {
    return static_cast<ThreadState*>(::pthread_getspecific(ownKey()));
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void setThreadState(std::unique_ptr<ThreadState> state) {
  if (::pthread_setspecific(ownKey(), state.get()) != 0) throw std::bad_alloc();
  static_cast<void>(state.release());
}

}  // namespace quendal::platform
