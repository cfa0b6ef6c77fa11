// A logger whose log a benchmark fills.
#pragma once

#include <cstdint>
#include <filesystem>

#include "core/dispatch.h"
#include "logging/logging.h"

namespace quendal::bench {

/// Writes LOG.TXT in a folder, and never rolls it over.
inline Object loggerIn(const std::filesystem::path& folder) {
  const Object logger = Owned<Logging>::make().object();
  logger.call(u"SetLogPath", folder.u16string() + u"\\");
  logger.call(u"SetLogFile", u"LOG.TXT");
  logger.put(u"RolloverBytes", std::int32_t{0});
  return logger;
}

}  // namespace quendal::bench
