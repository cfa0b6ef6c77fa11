#include "automation/posix/teardown.h"

#include <utility>

namespace quendal::automation {
namespace {

constexpr int kLevelsAtOnce = 16;

constinit thread_local int level = 0;
constinit thread_local Teardown* noted = nullptr;

}  // namespace

void tearDown(Teardown& container) noexcept {
  if (level == kLevelsAtOnce) {
    container.next = std::exchange(noted, &container);
    return;
  }
  Teardown* next = &container;
  do {
    ++level;
    next->run(*next);
    --level;
    if (level > 0) return;
    next = noted;
    if (next != nullptr) noted = next->next;
  } while (next != nullptr);
}

}  // namespace quendal::automation
