#include "platform/code_page.h"

#include <gtest/gtest.h>

#include "base/utf8.h"

namespace quendal::platform {
namespace {

TEST(CodePage, OneByteForEachUnit) {
  if (fromCodePage("\x80\xE9") != u"€é") GTEST_SKIP() << "the system's code page is not 1252";
  std::string all;
  for (int i = 0; i < 256; ++i) all += static_cast<char>(i);
  const std::u16string text = fromCodePage(all);
  EXPECT_EQ(toCodePage(text), all);
  EXPECT_EQ(text.substr(0x80, 32), u"€\u0081‚ƒ„…†‡ˆ‰Š‹Œ\u008dŽ\u008f\u0090‘’“”•–—˜™š›œ\u009džŸ");
  EXPECT_EQ(toCodePage(std::u16string{u'é', u'日', 0xD800, u'é'}), "\xE9??\xE9");
  // More than the system takes at once, and a pair, which has two bytes.
  const std::u16string many(3u << 20, u'é');
  EXPECT_TRUE(toCodePage(many + u"😀é") == std::string(many.size(), '\xE9') + "??\xE9");
}

TEST(Utf8, TextComesBack) {
  const std::pair<std::u16string_view, std::string_view> kCases[] = {
      {u"\u007F\u0080\u07FF\u0800\uFFFF", "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF"},
      {u"\uD7FF\uE000", "\xED\x9F\xBF\xEE\x80\x80"},
      {u"\U00010000\U0010FFFF", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"},
      {u"eight by€ight and on", "eight by\xE2\x82\xACight and on"},
  };
  for (const auto& [text, bytes] : kCases) {
    EXPECT_EQ(toUtf8(text), bytes);
    EXPECT_EQ(fromUtf8(bytes), text);
  }
  const std::u16string loose{u'a', 0xD800, 0xD83D, 0xDE00, 0xDE00, u'é', 0xD800};
  EXPECT_EQ(fromUtf8(toUtf8(loose)), u"a\uFFFD😀\uFFFDé\uFFFD");
}

TEST(Utf8, MalformedBytesBecomeReplacements) {
  const std::pair<std::string_view, const char16_t*> kCases[] = {
      {"a\xC0\x80z", u"a\uFFFD\uFFFDz"},                  // overlong
      {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},            // a surrogate
      {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},  // beyond the last character
      {"\xF5\xFF", u"\uFFFD\uFFFD"},
      {"\xE2\x82", u"\uFFFD"},  // cut at the end: one, for the longest start
      {"\xF0\x9F\x98\xC3\xA9", u"\uFFFDé"},
  };
  for (const auto& [bytes, text] : kCases) EXPECT_EQ(toUtf8(fromUtf8(bytes)), toUtf8(text));
}

}  // namespace
}  // namespace quendal::platform
