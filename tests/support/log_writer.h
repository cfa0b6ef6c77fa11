// One of several processes that write to one log.
#pragma once

#include <string>

namespace quendal::test {

/// The test program itself, for those who run it again.
inline std::string testProgram;

/// Writes `count` entries "NAME-1." to "NAME-count." to LOG.TXT in the current folder, repeating
/// each call that raised. Returns 0 when all were written.
int writeLog(const char* name, int count, int rolloverBytes);

}  // namespace quendal::test
