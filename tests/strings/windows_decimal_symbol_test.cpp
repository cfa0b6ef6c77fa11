// NumberToWords where the user has set another decimal symbol, which only this home can have.
#include "platform/windows/wide.h"
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

}  // namespace
}  // namespace quendal::test
