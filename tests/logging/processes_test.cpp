// Several processes that write to one log and roll it over all the time lose nothing.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <future>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "base/text.h"
#include "base/utf8.h"
#include "logging/logging.h"
#include "support/log_writer.h"
#include "tests/platform/temp_folder.h"

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

namespace {

constexpr int kProcesses = 8;
constexpr int kEntries = 5000;

TEST(Processes, EightWritersThatRollOverLeaveEveryEntryExactlyOnce) {
  const platform::TempFolder folder;
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(folder.native());
  std::vector<std::future<int>> writers;
  for (int i = 0; i < kProcesses; ++i)
    writers.push_back(std::async(std::launch::async, [i] {
      const std::string line = '"' + testProgram + "\" --write-log W" + std::to_string(i) + " " +
                               std::to_string(kEntries) + " 65536";
      return std::system(line.c_str());
    }));
  for (std::future<int>& writer : writers) EXPECT_EQ(writer.get(), 0);
  std::filesystem::current_path(before);

  std::map<std::u16string, int> seen;
  const std::vector<std::u16string> files = platform::listFiles(folder.path());
  for (const std::u16string& name : files) {
    const std::string bytes = platform::contentOf(folder / name);
    ASSERT_EQ(bytes.size() % 2, 0u);
    std::u16string text(bytes.size() / 2, u'\0');
    std::memcpy(text.data(), bytes.data(), bytes.size());
    EXPECT_TRUE(text.starts_with(u'\uFEFF'));
    for (std::size_t at = 0; (at = text.find(u"W", at)) != text.npos; ++at) {
      const std::u16string entry = text.substr(at, text.find(u".\r\n", at) - at);
      if (entry.find(u'-') == 2) ++seen[entry];
    }
  }
  EXPECT_GT(files.size(), 10u);
  EXPECT_EQ(seen.size(), static_cast<std::size_t>(kProcesses * kEntries));
  for (const auto& [entry, count] : seen) ASSERT_EQ(count, 1) << toUtf8(entry);
}

}  // namespace
}  // namespace quendal::test
