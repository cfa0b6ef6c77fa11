// The log file: folders, first text, roll-over, encoding, and what happens when things fail.
#include <gtest/gtest.h>

#include <algorithm>

#include "base/utf8.h"
#include "logging/log_file.h"
#include "platform/clock.h"
#include "platform/code_page.h"
#include "platform/locale.h"
#include "tests/platform/temp_folder.h"
#include "tests/support/outcome.h"

namespace quendal {
namespace {

using platform::contentOf;
using platform::FileError;
using platform::TempFolder;
using test::raisedBy;

class LogFileTest : public ::testing::Test {
 protected:
  LogFileTest() : log(logFile()) {}

  LogFile logFile() const {
    LogFile file([] { return std::u16string(u"BANNER"); });
    file.setFolder(folder / u"");
    file.setName(u"log.txt");
    file.setFormat(LogFile::Format::CodePage);
    return file;
  }
  static void write(LogFile& file, std::u16string_view text) {
    file.append(file.ensureOpen(), text);
  }
  void create(std::u16string_view name) {
    ASSERT_EQ(platform::createFile(folder / name, {}), FileError::None);
  }
  std::string content(std::u16string_view name) { return contentOf(folder / name); }

  TempFolder folder;
  LogFile log;
};

TEST_F(LogFileTest, MissingFoldersAreCreatedOrSayWhyNot) {
  create(u"file");
  const std::pair<std::u16string, int> rows[] = {
      {folder / u"a\\b\\c\\", 0},
      {folder / u"a/b/../d\\", 0},
      {u"\\\\", platform::lookAt(u"\\\\").isFolder ? 0 : 52},  // on Linux that is the root
      {u"\\\\no-such-server", 52},
      {folder / u"file", 58},
      {folder / u"file\\below", 58},
      {folder / std::u16string(u"x\0b", 3), 52},
      {folder / (u"x\\" + std::u16string(256, u'n') + u"\\b"), 52},
  };
  for (const auto& row : rows)
    EXPECT_EQ(raisedBy([&] { ensureFolders(row.first); }), row.second) << toUtf8(row.first);
  for (const std::u16string_view name : {u"a\\b\\c", u"a\\d"})
    EXPECT_TRUE(platform::lookAt(folder / name).isFolder);
  EXPECT_FALSE(platform::lookAt(folder / u"x").exists);
}

TEST_F(LogFileTest, FolderAndNameAreJoinedWithNothingBetweenThem) {
  log.setFolder(folder / u"Logs");  // no separator at its end
  write(log, u"x");
  EXPECT_EQ(content(u"Logslog.txt"), "BANNER\r\nx\r\n");
  EXPECT_TRUE(platform::lookAt(folder / u"Logs").isFolder);
  std::filesystem::remove(folder.native() / "Logs");
  write(log, u"y");
  EXPECT_TRUE(platform::lookAt(folder / u"Logs").isFolder);
  log.setFullName(folder / u"Logs\\\\log.txt");
  write(log, u"z");
  EXPECT_EQ(content(u"Logs\\log.txt"), "z\r\n");
}

TEST_F(LogFileTest, OnlyTheObjectThatCreatesTheFileWritesTheBannerAndOnlyOnce) {
  LogFile second = logFile();
  write(log, u"one");
  write(second, u"two");
  EXPECT_EQ(content(u"log.txt"), "BANNER\r\none\r\ntwo\r\n");
  log.setName(u"next.txt");
  write(log, u"three");
  EXPECT_EQ(content(u"next.txt"), "three\r\n");
  log.expectBanner();
  log.setName(u"last.txt");
  log.ensure();
  EXPECT_EQ(content(u"last.txt"), "BANNER\r\n");
}

TEST_F(LogFileTest, TheFormatIsThatOfTheMoment) {
  using enum LogFile::Format;
  // The mark is written without a banner too, and into a file whose creator has not come to it.
  create(u"log.txt");
  log.setFormat(Utf16);
  write(log, u"\u20AC");
  LogFile::Opened opened = log.open();
  log.setFormat(CodePage);
  log.append(std::move(opened), u"x");
  write(log, u"z");
  EXPECT_EQ(content(u"log.txt"), std::string("\xFF\xFE\xAC\x20\r\0\n\0x\0\r\0\n\0z\r\n", 17));
  log.setFormat(Utf16);
  log.setName(u"next.txt");
  write(log, u"x");
  EXPECT_EQ(content(u"next.txt").substr(0, 5), std::string("\xFF\xFE\x42\0A", 5));
  log.setName(u"last.txt");
  log.ensure();
  EXPECT_EQ(content(u"last.txt"), "\xFF\xFE");
}

TEST_F(LogFileTest, AFileOfTheRollOverSizeBecomesTheDaysArchive) {
  const std::u16string date =
      platform::upperCase(platform::formatDate(platform::localNow(), u"dd_MMM_yyyy"));
  log.setName(u"Log.txt");
  log.ensure();
  const auto sizeOf = [&](std::u16string_view name) {
    return platform::lookAt(folder / name).size;
  };
  const auto fillTo = [&](std::int64_t size) {
    log.append(log.open(),
               std::u16string(static_cast<std::size_t>(size - sizeOf(u"Log.txt")) - 2, u'x'));
  };
  fillTo(100);
  for (const std::int32_t off : {101, 0, -1}) {
    log.setRolloverBytes(off);
    static_cast<void>(log.ensureOpen());
    EXPECT_EQ(sizeOf(u"Log.txt"), 100);
  }
  log.setRolloverBytes(100);
  for (const std::u16string& archive :
       {u"LOG.TXT_" + date + u".TXT", u"Log.txt_" + date + u"_1_1.TXT",
        u"Log.txt_" + date + u"_2_2.TXT"}) {
    static_cast<void>(log.ensureOpen());
    EXPECT_EQ(std::ranges::count(platform::listFiles(folder.path()), archive), 1);  // in this case
    EXPECT_EQ(sizeOf(archive), 100);
    EXPECT_EQ(sizeOf(u"Log.txt"), 0);  // the banner was written already
    fillTo(100);
  }
}

TEST_F(LogFileTest, FaultsRaiseAndTheLogWorksAgainWhenTheyAreGone) {
  const std::pair<std::u16string, int> rows[] = {
      {folder / u"", 70},
      {folder / std::u16string(300, u'n'), 52},
      {folder / u"none\\log.txt", 76},
      {u"", 52},
  };
  for (const auto& [name, error] : rows) {
    log.setFullName(name);
    EXPECT_EQ(raisedBy([&] { static_cast<void>(log.ensureOpen()); }), error) << toUtf8(name);
  }
  log.setName(u"log.txt");
  EXPECT_EQ(raisedBy([&] { log.append(log.open(), u"early"); }), 53);
  write(log, u"x");
  EXPECT_EQ(content(u"log.txt"), "BANNER\r\nx\r\n");
}

}  // namespace
}  // namespace quendal
