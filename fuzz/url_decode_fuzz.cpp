// Decodes arbitrary text; what encoding gives for two-digit codes must come back.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "platform/code_page.h"
#include "strings/encoders.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quendal;
  std::u16string text(size / 2, u'\0');
  if (!text.empty()) std::memcpy(text.data(), data, text.size() * 2);
  // Bytes as characters too, which find "%" and digits sooner.
  const std::u16string narrow(data, data + size);
  for (const std::u16string& input : {text, narrow}) {
    if (const auto decoded = strings::urlDecode(input); decoded && decoded->size() > input.size()) {
      std::abort();
    }
    const std::u16string known = platform::fromCodePage(platform::toCodePage(input));
    const bool twoDigits =
        known.find_first_of(u"\0\1\2\3\4\5\6\7\x8\t\n\v\f\r\xE\xF", 0, 16) == std::u16string::npos;
    if (twoDigits && strings::urlDecode(strings::urlEncode(known)) != known) std::abort();
    const std::u16string html = strings::htmlEncode(input);
    if (html.find_first_of(u"<>\"'=") != std::u16string::npos) std::abort();
    (void)strings::safeSqlString(input);
    (void)strings::safeFileName(input);
  }
  return 0;
}
