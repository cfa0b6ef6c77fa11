#include "automation/posix/teardown.h"

namespace quendal::automation {
namespace {

constexpr int kLevelsAtOnce = 16;

struct Progress {
  Teardown* pending = nullptr;
  int level = 0;
};

constinit thread_local Progress progress;

void runOne(Progress& state, Teardown& container) noexcept {
  ++state.level;
  container.run(container);
  --state.level;
}

}  // namespace

void tearDown(Teardown& container) noexcept {
  Progress& state = progress;
  if (state.level == kLevelsAtOnce) {
    container.next = state.pending;
    state.pending = &container;
    return;
  }
  runOne(state, container);
  while (state.level == 0 && state.pending != nullptr) {
    Teardown& next = *state.pending;
    state.pending = next.next;
    runOne(state, next);
  }
}

}  // namespace quendal::automation
