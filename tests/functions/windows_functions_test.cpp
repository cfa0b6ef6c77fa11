// What only this home can have: messages that come during a wait, another decimal symbol of the
// user, and files that another program locks by opening them.
#include <chrono>

#include "functions/functions.h"
#include "platform/windows/wide.h"
#include "tests/platform/temp_folder.h"
#include "tests/strings/strings_object.h"
#include "tests/support/script_object.h"

namespace quendal::test {
namespace {

int received = 0;

LRESULT CALLBACK count(HWND window, UINT message, WPARAM word, LPARAM value) {
  if (message == WM_TIMER || message == WM_APP) ++received;
  return DefWindowProcW(window, message, word, value);
}

TEST(Sleep, DispatchesMessagesAndLastsAsLongAllTheSame) {
  using Clock = std::chrono::steady_clock;
  const HWND window = CreateWindowExW(0, L"Static", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                      GetModuleHandleW(nullptr), nullptr);
  ASSERT_NE(window, nullptr);
  SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&count));
  received = 0;
  const Clock::time_point start = Clock::now();
  SetTimer(window, 1, 50, nullptr);
  Variant milliseconds(std::int32_t{400});
  VariantRef reference(&milliseconds);
  Owned<Functions>::make()->sleep(reference);
  const auto took = Clock::now() - start;
  KillTimer(window, 1);
  EXPECT_GE(received, 3);
  EXPECT_GE(took, std::chrono::milliseconds(380));
  EXPECT_LE(took, std::chrono::seconds(3));

  // A negative count is a wait without limit that the first message ends.
  received = 0;
  PostMessageW(window, WM_APP, 0, 0);
  milliseconds = Variant(std::int32_t{-1});
  Owned<Functions>::make()->sleep(reference);
  EXPECT_EQ(received, 1);
  DestroyWindow(window);
}

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
