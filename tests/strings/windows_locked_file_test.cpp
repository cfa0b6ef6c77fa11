// AppendToUTF8File and a file that another program holds; only this home locks files by opening.
#include "platform/windows/wide.h"
#include "tests/platform/temp_folder.h"
#include "tests/strings/strings_object.h"

namespace quendal::test {
namespace {

TEST(AppendToUtf8File, HeldByAnotherProgram) {
  const platform::TempFolder folder;
  const std::u16string path = folder / u"file";
  ASSERT_EQ(platform::createFile(path, platform::bytesOf("kept")), platform::FileError::None);
  for (const DWORD shared : {DWORD{0}, DWORD{FILE_SHARE_READ}, DWORD{FILE_SHARE_WRITE}}) {
    const platform::FileHandle holder(CreateFileW(oleText(path.c_str()), GENERIC_READ, shared,
                                                  nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(holder);
    EXPECT_EQ(called(u"AppendToUTF8File", path, u"x"), "False") << "shared for " << shared;
  }
  EXPECT_EQ(platform::contentOf(path), "kept");
  EXPECT_EQ(called(u"AppendToUTF8File", path, u"x"), "True");
}

}  // namespace
}  // namespace quendal::test
