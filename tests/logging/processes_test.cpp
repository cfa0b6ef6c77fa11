// Several processes that write to one log and roll it over all the time lose nothing.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <future>
#include <map>
#include <string>
#include <vector>

#include "base/utf8.h"
#include "support/log_writer.h"
#include "tests/platform/temp_folder.h"

namespace quendal {
namespace {

constexpr int kProcesses = 8;
constexpr int kEntries = 5000;

/// The log or archive as text; nothing when its bytes are not whole characters.
std::u16string decoded(std::u16string_view path) {
  std::vector<std::byte> bytes;
  EXPECT_EQ(platform::readFile(path, bytes), platform::FileError::None);
  EXPECT_EQ(bytes.size() % 2, 0u);
  std::u16string text(bytes.size() / 2, u'\0');
  std::memcpy(text.data(), bytes.data(), text.size() * 2);
  EXPECT_TRUE(text.starts_with(u'\uFEFF'));
  return text.substr(1);
}

TEST(Processes, EightWritersThatRollOverLeaveEveryEntryExactlyOnce) {
  const platform::TempFolder folder;
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(folder.native());
  std::vector<std::future<int>> writers;
  for (int i = 0; i < kProcesses; ++i)
    writers.push_back(std::async(std::launch::async, [i] {
      const std::string line = '"' + test::testProgram + "\" --write-log W" + std::to_string(i) +
                               " " + std::to_string(kEntries) + " 65536";
      return std::system(line.c_str());
    }));
  for (std::future<int>& writer : writers) EXPECT_EQ(writer.get(), 0);
  std::filesystem::current_path(before);

  std::map<std::u16string, int> seen;
  std::size_t files = 0;
  for (const std::u16string& name : platform::listFiles(folder.path())) {
    ++files;
    const std::u16string text = decoded(folder / name);
    for (std::size_t at = text.find(u"W"); at != text.npos; at = text.find(u"W", at + 1)) {
      const std::size_t end = text.find(u".\r\n", at);
      const std::u16string entry = text.substr(at, end - at);
      if (entry.find(u'-') == 2) ++seen[entry];
    }
  }
  EXPECT_GT(files, 10u);
  EXPECT_EQ(seen.size(), static_cast<std::size_t>(kProcesses * kEntries));
  for (const auto& [entry, count] : seen) ASSERT_EQ(count, 1) << toUtf8(entry);
}

}  // namespace
}  // namespace quendal
