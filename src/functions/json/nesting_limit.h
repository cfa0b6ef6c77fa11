// The bound on how deep JSON may nest.
#pragma once

#include <quendal/error.h>

#include <cstddef>

#include "platform/stack.h"

namespace quendal::json {

/// Counts levels of nested arrays and objects against what fits the thread. The thread is asked
/// only by values that nest deeper than most do.
class NestingLimit {
 public:
  /// Raises 28 when another level does not fit beside `depth` levels.
  void checkBelow(std::size_t depth) {
    if (depth < known_) return;
    if (!isMeasured_) known_ = platform::nestingThatFits();
    isMeasured_ = true;
    if (depth >= known_) throw AutomationError(error_number::kOutOfStack);
  }

 private:
  static constexpr std::size_t kSurelyFits = 64;

  std::size_t known_ = kSurelyFits;
  bool isMeasured_ = false;
};

}  // namespace quendal::json
