// The state of one thread.
#pragma once

namespace quendal::platform {

/// The calling thread's own state: `make` makes it when the thread first asks, `destroy` destroys
/// it when the thread ends. There is one state for each thread, so all callers name the same two
/// functions.
[[nodiscard]] void* threadState(void* (*make)(), void (*destroy)(void*)) noexcept;

}  // namespace quendal::platform
