#include "encoding.h"

#include <quendal/automation.h>

#include <stdexcept>

#include "base/text.h"
#include "base/utf8.h"
#include "platform/windows/wide.h"

namespace quendal::host {

void checkCodePage(unsigned codePage) {
  if (codePage != CP_ACP && !IsValidCodePage(codePage))
    throw std::invalid_argument("the system has no code page " + std::to_string(codePage));
}

std::u16string decoded(std::string_view bytes, unsigned codePage) {
  if (codePage == kUtf8) return fromUtf8(bytes);
  checkCodePage(codePage);
  const int size = static_cast<int>(bytes.size());
  std::u16string text(bytes.size(), u'\0');  // no code page has characters of more units than bytes
  const int length =
      MultiByteToWideChar(codePage, 0, bytes.data(), size, platform::wideBuffer(text.data()), size);
  text.resize(static_cast<std::size_t>(length));
  return text;
}

std::string encoded(std::u16string_view text, unsigned codePage) {
  if (codePage == kUtf8) return toUtf8(text);
  checkCodePage(codePage);
  const int units = static_cast<int>(text.size());
  const auto convert = [&](char* out, int room) {
    return WideCharToMultiByte(codePage, 0, oleText(text.data()), units, out, room, nullptr,
                               nullptr);
  };
  std::string bytes(static_cast<std::size_t>(convert(nullptr, 0)), '\0');
  convert(bytes.data(), static_cast<int>(bytes.size()));
  return bytes;
}

std::string percentEncoded(std::u16string_view text, unsigned codePage) {
  std::string result;
  for (const char c : encoded(text, codePage)) {
    if (isDigit(c) || isLetter(c))
      result += c;
    else if (c == ' ')
      result += '+';
    else
      result += "%" + toUtf8(hexText(static_cast<unsigned char>(c), 2));
  }
  return result;
}

std::u16string htmlEncoded(std::u16string_view text) {
  std::u16string result = replaceAll(text, u"&", u"&amp;");
  result = replaceAll(result, u"<", u"&lt;");
  result = replaceAll(result, u">", u"&gt;");
  return replaceAll(result, u"\"", u"&quot;");
}

}  // namespace quendal::host
