#include "platform/thread_state.h"

#include <quendal/automation.h>

#include <memory>

namespace quendal::platform {
namespace {

struct Entry {
  void* state;
  void (*destroy)(void*);

  Entry(void* madeState, void (*destroyState)(void*)) : state(madeState), destroy(destroyState) {}
  Entry(const Entry&) = delete;
  Entry& operator=(const Entry&) = delete;
  ~Entry() { destroy(state); }
};

void CALLBACK onThreadEnd(void* value) {
  const std::unique_ptr<Entry> entry(static_cast<Entry*>(value));
}

/// Whether the process is ending, when other modules may already be gone.
bool processIsEnding() noexcept {
  using Function = BOOLEAN WINAPI();
  const auto address = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlDllShutdownInProgress");
  auto* const isEnding = reinterpret_cast<Function*>(reinterpret_cast<void*>(address));
  return isEnding != nullptr && isEnding() != FALSE;
}

/// A fiber-local slot, whose callback runs when a thread ends and, for what is left, when the
/// module is unloaded. Not `thread_local`: with MinGW its storage is gone before the destructors
/// of what is in it run.
class Slot {
 public:
  Slot() noexcept : index_(FlsAlloc(&onThreadEnd)) {}
  Slot(const Slot&) = delete;
  Slot& operator=(const Slot&) = delete;
  ~Slot() {
    if (!processIsEnding()) FlsFree(index_);
  }
  [[nodiscard]] DWORD index() const noexcept { return index_; }

 private:
  DWORD index_;
};

}  // namespace

void* threadState(void* (*make)(), void (*destroy)(void*)) noexcept {
  static const Slot slot;
  auto* entry = static_cast<Entry*>(FlsGetValue(slot.index()));
  if (entry == nullptr) {
    entry = std::make_unique<Entry>(make(), destroy).release();
    FlsSetValue(slot.index(), entry);
  }
  return entry->state;
}

}  // namespace quendal::platform
