// One of several processes that write to one log.
#pragma once

#include <string>
#include <vector>

namespace quendal::test {

/// Writes `count` entries "NAME-1." to "NAME-count." to LOG.TXT in a folder, repeating each call
/// that raised. Returns 0 when all were written.
int writeLog(const char* folder, const char* name, int count, int rolloverBytes);

/// Runs this program with arguments, several times at once. Returns the greatest exit status.
int runTogether(const std::vector<std::vector<std::string>>& argumentLists);

}  // namespace quendal::test
