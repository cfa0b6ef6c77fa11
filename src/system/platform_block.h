// The block of machine facts that opens every log file.
#pragma once

#include <string>
#include <vector>

namespace quendal::system {

/// One row of the block.
struct PlatformFact {
  std::u16string label;
  std::u16string value;
};

/// The twelve facts in their fixed order, each queried now. Needs the operating-system record
/// filled.
[[nodiscard]] std::vector<PlatformFact> platformFacts();

/// 19 lines joined by CR LF: rule, heading, facts, rule; no line end after the last.
[[nodiscard]] std::u16string platformInfoBlock();

/// The library's own description and legal notice above the block; one CR LF at the end.
[[nodiscard]] std::u16string platformBanner();

}  // namespace quendal::system
