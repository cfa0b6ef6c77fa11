#include "strings/encoders.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "base/text.h"
#include "platform/code_page.h"
#include "platform/locale.h"

namespace quendal::strings {
namespace {

constexpr bool isAlphanumeric(unsigned code) noexcept {
  return (code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z') ||
         (code >= 'a' && code <= 'z');
}

constexpr bool needsEntity(unsigned code) noexcept {
  return code < 32 || code > 127 || code == '"' || code == '&' || code == '\'' ||
         (code >= '<' && code <= '>');
}

// Whether a block of text may hold anything for `htmlEncode`: true for every character that it may
// change, and also for "#" and "?". Without branches, so that the compiler compares many characters
// at once.
constexpr std::size_t kBlock = 64;
bool isSuspicious(const char16_t* block) noexcept {
  std::uint16_t high = 0;
  std::uint16_t found = 0;
  for (std::size_t i = 0; i < kBlock; ++i) {
    const std::uint16_t c = block[i];
    high = static_cast<std::uint16_t>(high | c | (c - 32));
    const bool quote = (c & 0xFFFA) == 0x22;  // " # & '
    const bool compare = (c | 3) == 0x3F;     // < = > ?
    found = static_cast<std::uint16_t>(found | quote | compare);
  }
  return found != 0 || high > 127;
}

// How many characters stand for one of each code.
using CodeSizes = std::array<std::uint8_t, 256>;
constexpr CodeSizes sizesOf(int (*size)(unsigned code)) {
  CodeSizes sizes{};
  for (unsigned code = 0; code < sizes.size(); ++code) {
    sizes[code] = static_cast<std::uint8_t>(size(code));
  }
  return sizes;
}
constexpr CodeSizes kHtmlSizes = sizesOf([](unsigned code) {
  if (!needsEntity(code)) return 1;
  return code < 10 ? 4 : code < 100 ? 5 : 6;
});
constexpr CodeSizes kUrlSizes = sizesOf([](unsigned code) {
  return isAlphanumeric(code) ? 1 : code < 16 ? 2 : 3;
});

// Writes each character as it is where its code has the size 1, and by `write` elsewhere.
template <class Write>
std::u16string encoded(std::u16string_view text, const CodeSizes& sizes, Write write) {
  const std::string codes = platform::toCodePage(text);
  std::size_t size = 0;
  for (const char code : codes) size += sizes[static_cast<unsigned char>(code)];
  std::u16string result(size, u'\0');
  char16_t* out = result.data();
  for (std::size_t i = 0; i < text.size(); ++i) {
    const unsigned code = static_cast<unsigned char>(codes[i]);
    if (sizes[code] == 1) {
      *out++ = text[i];
    } else {
      out = write(out, code);
    }
  }
  return result;
}

char16_t* writeEntity(char16_t* out, unsigned code) noexcept {
  *out++ = u'&';
  *out++ = u'#';
  if (code >= 100) *out++ = static_cast<char16_t>(u'0' + code / 100);
  if (code >= 10) *out++ = static_cast<char16_t>(u'0' + code / 10 % 10);
  *out++ = static_cast<char16_t>(u'0' + code % 10);
  *out++ = u';';
  return out;
}

char16_t* writeEscape(char16_t* out, unsigned code) noexcept {
  constexpr std::u16string_view kDigits = u"0123456789ABCDEF";
  *out++ = u'%';
  if (code >= 16) *out++ = kDigits[code / 16];
  *out++ = kDigits[code % 16];
  return out;
}

constexpr int hexValue(char16_t c) noexcept {
  if (c >= u'0' && c <= u'9') return c - u'0';
  const char16_t lower = asciiLower(c);
  return lower >= u'a' && lower <= u'f' ? lower - u'a' + 10 : -1;
}

// The characters of single codes, asked of the system once each.
class CodeCharacters {
 public:
  char16_t of(unsigned code) {
    if (code < kAscii) return static_cast<char16_t>(code);
    char16_t& character = others_[code - kAscii];
    if (character == u'\0') {
      const char byte = static_cast<char>(code);
      const std::u16string found = platform::fromCodePage({&byte, 1});
      // Half of a two-byte character is none by itself.
      character = found.size() == 1 ? found.front() : u'?';
    }
    return character;
  }

 private:
  static constexpr unsigned kAscii = 0x80;
  std::array<char16_t, 256 - kAscii> others_{};  // NUL for those not asked yet
};

// What a search for [^a-z0-9\u00E0-\u00FC] without regard to case leaves alone. U+00D7 is no
// upper-case letter: it and U+00F7 are two signs.
constexpr bool isKeptInFileName(char16_t c) noexcept {
  if (c < 0x80) return isAlphanumeric(c);
  return (c >= 0xE0 && c <= 0xFC) || (c >= 0xC0 && c <= 0xDC && c != 0xD7);
}

}  // namespace

bool isPlainHtml(std::u16string_view text) noexcept {
  for (; text.size() >= kBlock; text.remove_prefix(kBlock)) {
    const auto block = text.substr(0, kBlock);
    if (isSuspicious(block.data()) && std::any_of(block.begin(), block.end(), needsEntity)) {
      return false;
    }
  }
  return std::none_of(text.begin(), text.end(), needsEntity);
}

std::u16string htmlEncode(std::u16string_view text) {
  return encoded(text, kHtmlSizes, writeEntity);
}

std::u16string urlEncode(std::u16string_view text) { return encoded(text, kUrlSizes, writeEscape); }

std::optional<std::u16string> urlDecode(std::u16string_view text) {
  std::u16string out;
  out.reserve(text.size());
  CodeCharacters characters;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char16_t c = text[at];
    if (c == u'+') {
      out += u' ';
    } else if (c == u'%') {
      if (text.size() - at < 3) return std::nullopt;
      const int high = hexValue(text[at + 1]);
      const int low = hexValue(text[at + 2]);
      if (high < 0 || low < 0) return std::nullopt;
      out += characters.of(static_cast<unsigned>(high * 16 + low));
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
  for (const auto& [entity, character] : kEntities) {
    if (out.find(entity) != std::u16string::npos) out = replaceAll(out, entity, character);
  }
  return replaceAll(out, u"'", u"''");
}

std::u16string safeFileName(std::u16string_view text) {
  std::u16string out = replaceAll(text, u"'", u"");
  std::replace_if(
      out.begin(), out.end(), [](char16_t c) { return !isKeptInFileName(c); }, u'_');
  return platform::upperCase(out);
}

}  // namespace quendal::strings
