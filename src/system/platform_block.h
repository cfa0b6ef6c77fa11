// The block of machine facts that opens every log file.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quendal::system {

/// One row of the block.
struct PlatformFact {
  std::u16string label;
  std::u16string value;
};

/// The twelve facts in their fixed order, each queried now. Also trims the apartment's stored
/// service-pack text, as the block always did. Needs the operating-system record filled.
[[nodiscard]] std::vector<PlatformFact> platformFacts();

/// Indent, label, a blank, full stops up to `width` counted from the label, a blank, the value.
/// Raises 5 when the label is longer than the width.
[[nodiscard]] std::u16string formatInfoRow(std::u16string_view label, std::u16string_view value,
                                           std::size_t indent, std::size_t width);

/// 19 lines joined by CR LF: rule, heading, facts, rule; no line end after the last.
[[nodiscard]] std::u16string platformInfoBlock();

/// The library's own description and legal notice above the block; one CR LF at the end.
[[nodiscard]] std::u16string platformBanner();

}  // namespace quendal::system
