#include "platform/files.h"

#include <algorithm>

#include "tests/platform/temp_folder.h"

namespace quendal::platform {
namespace {

using namespace std::literals;

TEST(FilesTest, ErrorsOfPathsAreTheSameForEveryOperation) {
  const TempFolder folder;
  ASSERT_EQ(createFile(folder / u"file", bytesOf("x")), FileError::None);
  ASSERT_EQ(createFolder(folder / u"sub"), FileError::None);
  struct Case {
    std::u16string path;
    FileError append, create, folder;
  };
  using enum FileError;
  const Case cases[] = {
      {u"", BadFileName, BadFileName, BadFileName},
      {folder / u"a\0b"sv, BadFileName, BadFileName, BadFileName},
      {folder / (u"none\\" + std::u16string(256, u'n')), BadFileName, BadFileName, BadFileName},
      {folder / std::u16string(5000, u'/'), BadFileName, BadFileName, BadFileName},
      {folder / u"none", NotFound, None, AlreadyExists},
      {folder / u"none\\deeper", PathNotFound, PathNotFound, PathNotFound},
      {folder / u"missing\\none", PathNotFound, PathNotFound, PathNotFound},
      {folder / u"sub", PermissionDenied, AlreadyExists, None},
      {folder / u"sub\\", PathNotFound, PathNotFound, None},
      {folder / u"file", None, AlreadyExists, AlreadyExists},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::filesystem::path(c.path.substr(0, 120)).string());
    std::vector<std::byte> bytes(1);
    EXPECT_EQ(appendToFile(c.path, bytesOf("y")), c.append);
    EXPECT_EQ(readFile(c.path, bytes), c.append);
    EXPECT_EQ(bytes.empty(), c.append != None);
    EXPECT_EQ(createFile(c.path, bytesOf("z")), c.create);
    EXPECT_EQ(createFolder(c.path), c.folder);
  }
  EXPECT_EQ(contentOf(folder / u"file"), "xy");
}

TEST(FilesTest, TheHeadGoesIntoAnEmptyFileAlone) {
  const TempFolder folder;
  std::string content(3'000'000, 'a');  // more than one buffer
  for (std::size_t i = 0; i < content.size(); ++i) content[i] = static_cast<char>(i * 31 >> 3);
  EXPECT_EQ(createFile(folder / u"log", {}), FileError::None);
  EXPECT_EQ(appendToFile(folder / u"log", {}), FileError::None);
  EXPECT_EQ(appendToFile(folder / u"log", bytesOf("head" + content), 4), FileError::None);
  EXPECT_EQ(appendToFile(folder / u"log", bytesOf("head\x41\0\r\0\n\0"sv), 4), FileError::None);
  EXPECT_TRUE(contentOf(folder / u"log") == "head" + content + "\x41\0\r\0\n\0"s);
  EXPECT_EQ(lookAt(folder / u"log").size, 3'000'010);
}

TEST(FilesTest, NamesOutsideAsciiAndWithTrailingBlanks) {
  const TempFolder folder;
  std::vector<std::u16string> names = {u"Gr\u00FC\u00DFe \u03A9", u"page.asp", u"\U0001F600"};
  for (const std::u16string& name : names) {
    ASSERT_EQ(createFile(folder / name, {}), FileError::None);
    EXPECT_TRUE(fileExists((folder / name) + u"  "));
    EXPECT_FALSE(fileExists((folder / name) + u"\t"));
  }
  ASSERT_EQ(createFolder(folder / u"sub"), FileError::None);
  EXPECT_FALSE(fileExists(folder / u"sub"));
  EXPECT_FALSE(fileExists(folder / u"  "));
  std::vector<std::u16string> listed = listFiles(folder.path());
  std::sort(names.begin(), names.end());
  std::sort(listed.begin(), listed.end());
  EXPECT_TRUE(listed == names);
  EXPECT_TRUE(listFiles(folder / u"missing").empty());
}

TEST(FilesTest, RenameNeverReplaces) {
  const TempFolder folder;
  ASSERT_EQ(createFile(folder / u"log", bytesOf("new")), FileError::None);
  ASSERT_EQ(createFile(folder / u"archive", bytesOf("old")), FileError::None);
  const struct {
    const char16_t *from, *to;
    FileError error;
  } rows[] = {{u"log", u"archive", FileError::AlreadyExists},
              {u"log", u"missing\\log", FileError::PathNotFound},
              {u"none", u"other", FileError::NotFound},
              {u"missing\\log", u"other", FileError::PathNotFound},
              {u"log", u"archive2", FileError::None}};
  for (const auto& row : rows) EXPECT_EQ(renameFile(folder / row.from, folder / row.to), row.error);
  EXPECT_EQ(contentOf(folder / u"archive"), "old");
  EXPECT_EQ(contentOf(folder / u"archive2"), "new");
  EXPECT_FALSE(lookAt(folder / u"log").exists);
}

TEST(FilesTest, AbsolutePaths) {
  std::u16string current = absolutePath(u".");
  ASSERT_FALSE(current.empty());
  const std::u16string drive = current.substr(0, current.find(u'\\'));  // none on POSIX
  const struct {
    std::u16string path, absolute;
  } cases[] = {
      {u"a/b\\.\\c\\..\\d", current + u"\\a\\b\\d"},
      {u"logs\\\\x//y", current + u"\\logs\\x\\y"},
      {u".\\..a\\.b\\", current + u"\\..a\\.b\\"},
      {u"\\..\\..\\a", drive + u"\\a"},
      {u"\\\\server\\share\\a\\..\\b", u"\\\\server\\share\\b"},
      {u"\\\\server\\share\\..\\..\\b\\", u"\\\\server\\share\\b\\"},
      {u"", u""},
      {std::u16string(u"a\0b", 3), u""},
      {std::u16string(256, u'n'), u""},
      {std::u16string(4400, u'/'), u""},
  };
  for (const auto& c : cases)
    EXPECT_TRUE(absolutePath(c.path) == c.absolute) << std::filesystem::path(c.path).string();
}

}  // namespace
}  // namespace quendal::platform
