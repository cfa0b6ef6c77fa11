#include "strings/encoders.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "base/text.h"
#include "platform/code_page.h"
#include "platform/locale.h"

namespace quendal::strings {
namespace {

constexpr auto isAlphanumeric = [](char16_t c) noexcept { return isDigit(c) || isLetter(c); };

// "&" and "'" differ in their last bit only. Said so, the test is one that compilers make for many
// characters at once.
constexpr auto needsNoEntity = [](char16_t c) noexcept {
  return c >= u' ' && c < 128 && c != u'"' && (c | 1) != u'\'' && !(c >= u'<' && c <= u'>');
};

// Writes each character as it is where its code `isPlain`, and by `append(out, code)` elsewhere. A
// plain character of ASCII is its own code: the code page is asked only from the first other one
// on, and then for several at once, as others are often near.
template <class IsPlain, class Append>
std::u16string encoded(std::u16string_view text, IsPlain isPlain, Append append) {
  constexpr std::size_t kAskedAtOnce = 15;
  std::u16string out;
  out.reserve(text.size());
  while (!text.empty()) {
    const char16_t* const begin = text.data();
    const char16_t* const other = findFirst(begin, begin + text.size(), std::not_fn(isPlain));
    out.append(begin, other);
    text.remove_prefix(static_cast<std::size_t>(other - begin));
    const std::u16string_view asked = text.substr(0, kAskedAtOnce);
    text.remove_prefix(asked.size());
    const std::string codes = platform::toCodePage(asked);
    for (std::size_t i = 0; i < asked.size(); ++i) {
      const char16_t code = static_cast<unsigned char>(codes[i]);
      if (isPlain(code))
        out += asked[i];
      else
        append(out, code);
    }
  }
  return out;
}

char16_t characterOf(int code) {
  const char byte = static_cast<char>(code);
  const std::u16string found = platform::fromCodePage({&byte, 1});
  // Half of a two-byte character is none by itself.
  return found.size() == 1 ? found.front() : u'?';
}

// What a search for [^a-z0-9\u00E0-\u00FC] without regard to case leaves alone. U+00D7 is no
// upper-case letter: it and U+00F7 are two signs.
constexpr bool isKeptInFileName(char16_t c) noexcept {
  if (c < 0x80) return isAlphanumeric(c);
  return (c >= 0xE0 && c <= 0xFC) || (c >= 0xC0 && c <= 0xDC && c != 0xD7);
}

}  // namespace

std::u16string htmlEncode(std::u16string_view text) {
  return encoded(text, needsNoEntity, [](std::u16string& out, char16_t code) {
    out.append(u"&#").append(decimalText(code)).append(u";");
  });
}

std::u16string urlEncode(std::u16string_view text) {
  return encoded(text, isAlphanumeric, [](std::u16string& out, char16_t code) {
    out.append(u"%").append(hexText(code, code >= 16 ? 2 : 1));
  });
}

std::optional<std::u16string> urlDecode(std::u16string_view text) {
  std::u16string out;
  out.reserve(text.size());
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char16_t c = text[at];
    if (c == u'+') {
      out += u' ';
    } else if (c == u'%') {
      if (text.size() - at < 3) return std::nullopt;
      const int high = hexValue(text[at + 1]);
      const int low = hexValue(text[at + 2]);
      if (high < 0 || low < 0) return std::nullopt;
      out += characterOf(high * 16 + low);
      at += 2;
    } else {
      out += c;
    }
  }
  return out;
}

std::u16string safeSqlString(std::u16string_view text) {
  // One after the other: what "&#38;" leaves may begin an entity of a later row.
  constexpr std::pair<std::u16string_view, std::u16string_view> kEntities[] = {
      {u"&#34;", u"\""}, {u"&#32;", u" "}, {u"&#38;", u"&"}, {u"&#39;", u"'"},
      {u"&#60;", u"<"},  {u"&#61;", u"="}, {u"&#62;", u">"}};
  std::u16string out(text);
  for (const auto& [entity, character] : kEntities) out = replaceAll(out, entity, character);
  return replaceAll(out, u"'", u"''");
}

std::u16string safeFileName(std::u16string_view text) {
  std::u16string out = replaceAll(text, u"'", u"");
  std::replace_if(
      out.begin(), out.end(), [](char16_t c) { return !isKeptInFileName(c); }, u'_');
  return platform::upperCase(out);
}

}  // namespace quendal::strings
