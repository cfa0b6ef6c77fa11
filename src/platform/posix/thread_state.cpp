#include "platform/thread_state.h"

namespace quendal::platform {
namespace {

struct Holder {
  void* state = nullptr;
  void (*destroy)(void*) = nullptr;

  Holder() = default;
  Holder(const Holder&) = delete;
  Holder& operator=(const Holder&) = delete;
  ~Holder() {
    if (state != nullptr) destroy(state);
  }
};

}  // namespace

void* threadState(void* (*make)(), void (*destroy)(void*)) noexcept {
  thread_local Holder holder;
  if (holder.state == nullptr) {
    holder.destroy = destroy;
    holder.state = make();
  }
  return holder.state;
}

}  // namespace quendal::platform
