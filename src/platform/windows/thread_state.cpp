#include "platform/thread_state.h"

#include <quendal/automation.h>

#include <new>

namespace quendal::platform {
namespace {

void CALLBACK onThreadEnd(void* value) {
  const std::unique_ptr<ThreadState> state(static_cast<ThreadState*>(value));
}

DWORD madeIndex() {
  const DWORD index = FlsAlloc(&onThreadEnd);
  if (index == FLS_OUT_OF_INDEXES) throw std::bad_alloc();
  return index;
}

/// A fiber-local slot. Not `thread_local`: with MinGW its storage is gone before the destructors of
/// what is in it run. The slot is never given back, as the library stays loaded.
DWORD ownIndex() {
  static const DWORD index = madeIndex();  // tried again by the next call when it throws
  return index;
}

}  // namespace

ThreadState* threadState() noexcept {
  try {
    return static_cast<ThreadState*>(FlsGetValue(ownIndex()));
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void setThreadState(std::unique_ptr<ThreadState> state) {
  if (FlsSetValue(ownIndex(), state.get()) == FALSE) throw std::bad_alloc();
  static_cast<void>(state.release());
}

}  // namespace quendal::platform
