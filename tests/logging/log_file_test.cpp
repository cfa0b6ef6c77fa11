// The log file: folders, first text, roll-over, encoding, and what happens when things fail.
#include <gtest/gtest.h>

#include "logging/log_file.h"
#include "platform/clock.h"
#include "platform/code_page.h"
#include "platform/locale.h"
#include "quendal/error.h"
#include "tests/platform/temp_folder.h"

namespace quendal {
namespace {

using platform::contentOf;
using platform::FileError;
using platform::TempFolder;

LogFile logIn(const TempFolder& folder, std::u16string_view name = u"log.txt") {
  LogFile log([] { return std::u16string(u"BANNER"); });
  log.setFolder(folder / u"");
  log.setName(std::u16string(name));
  log.setFormat(LogFile::Format::CodePage);
  return log;
}

void write(LogFile& log, std::u16string_view text) {
  log.ensure();
  log.append(log.open(), std::u16string(text));
}

int errorOf(const std::function<void()>& step) {
  try {
    step();
    return 0;
  } catch (const AutomationError& error) {
    return error.number();
  }
}

TEST(LogFile, MissingFoldersAreCreatedDownToTheLast) {
  const TempFolder folder;
  ensureFolders(folder / u"a\\b\\c\\");
  EXPECT_TRUE(platform::lookAt(folder / u"a\\b\\c").isFolder);
  ensureFolders(folder / u"a\\b\\c");
}

TEST(LogFile, AFolderThatCannotBeCreatedRaises) {
  const TempFolder folder;
  ASSERT_EQ(platform::createFile(folder / u"file", {}), FileError::None);
  const struct {
    std::u16string path;
    int error;
  } kRows[] = {
      {u"", 0},
      {u"\\\\", platform::lookAt(u"\\\\").isFolder ? 0 : 52},  // on Linux that is the root
      {u"\\\\no-such-server", 52},
      {u"\\\\no-such-server\\", 52},
      {folder / u"file", 58},
      {folder / u"file\\below", 58},
      {folder / std::u16string(u"a\0b", 3), 52},
      {folder / (u"a\\" + std::u16string(256, u'n') + u"\\b"), 52},
      {folder / std::u16string(4400, u'/'), 52},
  };
  for (const auto& row : kRows) {
    EXPECT_EQ(errorOf([&] { ensureFolders(row.path); }), row.error)
        << std::filesystem::path(row.path.substr(0, 120)).string();
  }
  EXPECT_FALSE(platform::lookAt(folder / u"a").exists);
}

TEST(LogFile, FolderAndNameAreJoinedWithNothingBetweenThem) {
  const TempFolder folder;
  LogFile log = logIn(folder);
  log.setFolder(folder / u"Logs");  // no separator at its end
  write(log, u"x");
  EXPECT_EQ(contentOf(folder / u"Logslog.txt"), "BANNER\r\nx\r\n");
}

TEST(LogFile, OnlyTheObjectThatCreatesTheFileWritesTheBannerAndOnlyOnce) {
  const TempFolder folder;
  LogFile log = logIn(folder), second = logIn(folder);
  write(log, u"one");
  write(second, u"two");
  EXPECT_EQ(contentOf(folder / u"log.txt"), "BANNER\r\none\r\ntwo\r\n");
  log.setName(u"next.txt");
  write(log, u"three");
  EXPECT_EQ(contentOf(folder / u"next.txt"), "three\r\n");
}

TEST(LogFile, TheFormatIsThatOfTheMoment) {
  const TempFolder folder;
  LogFile log = logIn(folder);
  log.setFormat(LogFile::Format::Utf16);
  write(log, u"\u20AC");
  log.setFormat(LogFile::Format::CodePage);
  write(log, u"z");
  const std::string content = contentOf(folder / u"log.txt");
  EXPECT_TRUE(
      content.starts_with("\xFF\xFE"
                          "B"));
  EXPECT_TRUE(content.ends_with(std::string_view("\xAC\x20\r\0\n\0z\r\n", 9)));
}

TEST(LogFile, TheMarkIsWrittenAlsoWithoutABanner) {
  const TempFolder folder;
  LogFile log = logIn(folder);
  write(log, u"the banner goes here");
  log.setFormat(LogFile::Format::Utf16);
  log.setName(u"next.txt");
  log.ensure();
  EXPECT_EQ(contentOf(folder / u"next.txt"), "\xFF\xFE");
  log.setName(u"abandoned.txt");  // its creator ended before it wrote anything
  ASSERT_EQ(platform::createFile(folder / u"abandoned.txt", {}), FileError::None);
  write(log, u"\u20AC");
  EXPECT_EQ(contentOf(folder / u"abandoned.txt"), std::string("\xFF\xFE\xAC\x20\r\0\n\0", 8));
}

TEST(LogFile, AFileOfTheRollOverSizeBecomesTheDaysArchive) {
  const TempFolder folder;
  const std::u16string date =
      platform::upperCase(platform::formatDate(platform::localNow(), u"dd_MMM_yyyy"));
  LogFile log = logIn(folder, u"Log.txt");
  const auto fill = [&](std::size_t size) {  // with its line end, exactly `size` bytes
    log.append(log.open(), std::u16string(size - 2, u'x'));
  };
  log.ensure();
  ASSERT_EQ(platform::renameFile(folder / u"Log.txt", folder / u"aside"), FileError::None);
  log.ensure();  // an empty file: the banner was written already
  fill(100);
  log.setRolloverBytes(101);
  log.ensure();
  EXPECT_EQ(platform::lookAt(folder / u"Log.txt").size, 100);

  log.setRolloverBytes(100);
  log.ensure();
  EXPECT_EQ(platform::lookAt(folder / u"Log.txt").size, 0);
  const std::u16string first = u"LOG.TXT_" + date + u".TXT";
  EXPECT_EQ(platform::lookAt(folder / first).size, 100);
  for (const std::u16string_view number : {u"_1_1", u"_2_2"}) {
    fill(100);
    log.ensure();
    const std::u16string archive = u"Log.txt_" + date + std::u16string(number) + u".TXT";
    EXPECT_EQ(platform::lookAt(folder / archive).size, 100);
  }
  for (const std::int32_t off : {0, -1}) {
    fill(200);
    log.setRolloverBytes(off);
    log.ensure();
    EXPECT_GE(platform::lookAt(folder / u"Log.txt").size, 200);
  }
}

TEST(LogFile, FaultsRaiseAndTheLogWorksAgainWhenTheyAreGone) {
  const TempFolder folder;
  LogFile log = logIn(folder);
  log.setName(u"");
  EXPECT_NE(errorOf([&] { log.ensure(); }), 0);  // a folder's own name
  log.setName(u"sub");
  ASSERT_EQ(platform::createFolder(folder / u"sub"), FileError::None);
  EXPECT_EQ(errorOf([&] { log.ensure(); }), 70);
  log.setName(std::u16string(300, u'n'));
  EXPECT_EQ(errorOf([&] { log.ensure(); }), 52);
  log.setName(u"log.txt");
  EXPECT_EQ(errorOf([&] { log.append(log.open(), u"early"); }), 53);
  log.setFullName(u"");
  EXPECT_EQ(errorOf([&] { log.ensure(); }), 52);
  log.setName(u"log.txt");
  write(log, u"x");
  EXPECT_EQ(contentOf(folder / u"log.txt"), "BANNER\r\nx\r\n");
}

}  // namespace
}  // namespace quendal
