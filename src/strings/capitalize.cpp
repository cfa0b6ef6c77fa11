#include "strings/capitalize.h"

#include "platform/code_page.h"
#include "platform/locale.h"

namespace quendal::strings {

std::u16string capitalize(std::u16string_view sentence) {
  const std::u16string text = platform::fromCodePage(platform::toCodePage(sentence));
  const std::u16string upper = platform::upperCase(text);
  std::u16string out = platform::lowerCase(text);
  bool startsWord = true;
  for (std::size_t i = 0; i < out.size(); ++i) {
    if (startsWord) out[i] = upper[i];
    startsWord = text[i] == u' ';
  }
  return out;
}

}  // namespace quendal::strings
