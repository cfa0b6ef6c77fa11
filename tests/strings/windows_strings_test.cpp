// What only this home can have: another decimal symbol of the user, and files that another program
// locks by opening them.
#include "platform/windows/wide.h"
#include "tests/platform/temp_folder.h"
#include "tests/strings/strings_object.h"
#include "tests/support/script_object.h"

namespace quendal::test {
namespace {

bool setDecimalSymbol(const wchar_t* symbol) {
  return SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, symbol) != 0;
}

TEST(NumberToWords, TheUsersDecimalSymbolDoesNotMatter) {
  wchar_t before[8] = {};
  ASSERT_GT(GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, before, 8), 0);
  ASSERT_TRUE(setDecimalSymbol(L","));
  EXPECT_TRUE(textOf(Variant(12.5)) == u"12,5");
  EXPECT_EQ(called(u"NumberToWords", 12.5), "\"and  twelve\"");
  const Object half = ScriptObject().defaultMember([](auto) { return Variant(0.5); }).object();
  EXPECT_EQ(called(u"NumberToWords", Variant(half)), "\"zero\"");
  EXPECT_TRUE(setDecimalSymbol(before));
}

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
