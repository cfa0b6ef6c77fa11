#include "platform/files.h"

#include <algorithm>

#include "tests/platform/temp_folder.h"

namespace quendal::platform {
namespace {

using namespace std::literals;
using enum FileError;

TEST(FilesTest, ErrorsOfPathsAreTheSameForEveryOperation) {
  const TempFolder folder;
  ASSERT_EQ(createFile(folder / u"file", bytesOf("x")), None);
  ASSERT_EQ(createFolder(folder / u"sub"), None);
  const struct {
    std::u16string path;
    FileError append, create, folder;
  } cases[] = {
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
  for (const auto& c : cases) {
    SCOPED_TRACE(std::filesystem::path(c.path.substr(0, 120)).string());
    std::vector<std::byte> bytes;
    EXPECT_EQ(appendToFile(c.path, bytesOf("y")), c.append);
    EXPECT_EQ(readFile(c.path, bytes), c.append);
    EXPECT_EQ(createFile(c.path, bytesOf("z")), c.create);
    EXPECT_EQ(createFolder(c.path), c.folder);
  }
  EXPECT_EQ(contentOf(folder / u"file"), "xy");
}

TEST(FilesTest, TheHeadGoesIntoAnEmptyFileAlone) {
  const TempFolder folder;
  const std::string content = std::string(3'000'000, 'a') + "b";  // more than one buffer
  EXPECT_EQ(createFile(folder / u"log", {}), None);
  EXPECT_EQ(appendToFile(folder / u"log", {}), None);
  EXPECT_EQ(appendToFile(folder / u"log", bytesOf("head" + content), 4), None);
  EXPECT_EQ(appendToFile(folder / u"log", bytesOf("head\x41\0\r\0\n\0"sv), 4), None);
  EXPECT_TRUE(contentOf(folder / u"log") == "head" + content + "\x41\0\r\0\n\0"s);
  EXPECT_EQ(lookAt(folder / u"log").size, 3'000'011);
}

TEST(FilesTest, NamesOutsideAsciiAndWithTrailingBlanks) {
  const TempFolder folder;
  for (const auto name : {u"page.asp", u"Gr\u00FC\u00DFe \u03A9", u"\U0001F600"}) {
    ASSERT_EQ(createFile(folder / name, {}), None);
    EXPECT_TRUE(fileExists((folder / name) + u"  "));
    EXPECT_FALSE(fileExists((folder / name) + u"\t"));
    EXPECT_EQ(std::ranges::count(listFiles(folder.path()), name), 1);
  }
  ASSERT_EQ(createFolder(folder / u"sub"), None);
  EXPECT_FALSE(fileExists(folder / u"sub"));
  EXPECT_FALSE(fileExists(folder / u"  "));
  EXPECT_TRUE(listFiles(folder / u"missing").empty());
}

TEST(FilesTest, RenameNeverReplaces) {
  const TempFolder folder;
  ASSERT_EQ(createFile(folder / u"log", bytesOf("new")), None);
  ASSERT_EQ(createFile(folder / u"archive", bytesOf("old")), None);
  EXPECT_EQ(renameFile(folder / u"log", folder / u"archive"), AlreadyExists);
  EXPECT_EQ(renameFile(folder / u"log", folder / u"missing\\log"), PathNotFound);
  EXPECT_EQ(renameFile(folder / u"none", folder / u"other"), NotFound);
  EXPECT_EQ(renameFile(folder / u"missing\\log", folder / u"other"), PathNotFound);
  EXPECT_EQ(renameFile(folder / u"log", folder / u"archive2"), None);
  EXPECT_EQ(contentOf(folder / u"archive"), "old");
  EXPECT_EQ(contentOf(folder / u"archive2"), "new");
  EXPECT_FALSE(lookAt(folder / u"log").exists);
}

TEST(FilesTest, AbsolutePaths) {
  const std::u16string current = absolutePath(u".");
  ASSERT_FALSE(current.empty());
  const std::u16string drive = current.substr(0, current.find(u'\\'));  // none on POSIX
  const std::pair<std::u16string_view, std::u16string> cases[] = {
      {u"a/b\\.\\c\\..\\d", current + u"\\a\\b\\d"},
      {u".\\..a\\.b\\", current + u"\\..a\\.b\\"},
      {u"\\..\\..\\a", drive + u"\\a"},
      {u"\\\\server\\share\\a\\..\\b", u"\\\\server\\share\\b"},
      {u"\\\\server\\share\\..\\..\\b\\", u"\\\\server\\share\\b\\"},
  };
  for (const auto& [path, absolute] : cases)
    EXPECT_TRUE(absolutePath(path) == absolute) << std::filesystem::path(path).string();
}

}  // namespace
}  // namespace quendal::platform
