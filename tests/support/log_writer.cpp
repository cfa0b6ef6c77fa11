#include "support/log_writer.h"

#include <chrono>
#include <filesystem>
#include <thread>

#include "base/text.h"
#include "base/utf8.h"
#include "logging/logging.h"

namespace quendal::test {

int writeLog(const char* name, int count, int rolloverBytes) {
  const Object logger = Owned<Logging>::make().object();
  logger.call(u"SetLogPath", std::filesystem::current_path().u16string() + u"\\");
  logger.call(u"SetLogFile", u"LOG.TXT");
  logger.put(u"RolloverBytes", std::int32_t{rolloverBytes});
  const std::u16string prefix = fromUtf8(name) + u"-";
  constexpr int kTries = 10'000;
  for (int i = 1; i <= count; ++i) {
    for (int attempt = 0;; ++attempt) {
      try {
        logger.call(u"WriteLog", std::int16_t{2}, prefix + decimalText(i) + u".");
        break;
      } catch (const AutomationError&) {  // lost a race: the page repeats the call
        if (attempt == kTries) return 1;
        std::this_thread::sleep_for(std::chrono::microseconds(100));
      }
    }
  }
  return 0;
}

}  // namespace quendal::test
