// What a log entry asks of the system, by hand: the floor of the log's rows. Both abort on failure.
#pragma once

#include <filesystem>
#include <string_view>

namespace quendal::bench {

struct HandLog {
  std::filesystem::path folder;
  std::filesystem::path file;  // exists
};

/// Looks at the folder and at the file, opens it for appending, writes, closes it.
void plainEntryByHand(const HandLog& log, std::u16string_view entry);

/// Every call that an entry of ours makes: opens the file, asks for its size, the clocks and the
/// identities of a stamp, locks the file, finds its end, writes, unlocks, closes.
void wholeEntryByHand(const HandLog& log, std::u16string_view entry);

}  // namespace quendal::bench
