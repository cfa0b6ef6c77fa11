#include "platform/code_page.h"

#include <algorithm>
#include <array>

#include "base/characters.h"
#include "platform/windows/code_page_bytes.h"
#include "platform/windows/wide.h"

namespace quendal::platform {
namespace {

constexpr std::size_t kChunk = 1u << 20;  // keeps lengths within the system's `int`

// A character of a multi-byte code page that takes more than one byte has no byte of its own.
char oneByte(char16_t unit) {
  std::array<char, 8> bytes{};
  const wchar_t wide = static_cast<wchar_t>(unit);
  const int size = WideCharToMultiByte(CP_ACP, 0, &wide, 1, bytes.data(),
                                       static_cast<int>(bytes.size()), nullptr, nullptr);
  return size == 1 ? bytes[0] : '?';
}

// `text` holds no surrogates; `out` has room for as many bytes.
void convert(std::u16string_view text, char* out) {
  const int size = static_cast<int>(text.size());
  const int written =
      WideCharToMultiByte(CP_ACP, 0, oleText(text.data()), size, out, size, nullptr, nullptr);
  if (written != size) std::transform(text.begin(), text.end(), out, oneByte);
}

}  // namespace

std::string toCodePage(std::u16string_view text) {
  std::string bytes(text.size(), '?');
  char* out = bytes.data();
  if (std::ranges::all_of(text, isAscii<char16_t>)) {
    std::transform(text.begin(), text.end(), out, [](char16_t c) { return static_cast<char>(c); });
    return bytes;
  }
  // The system would give one byte for both halves of a pair: those keep their two "?".
  for (std::size_t at = 0; at < text.size();) {
    if (isSurrogate(text[at])) {
      ++at;
      continue;
    }
    const auto run = text.substr(at, kChunk);
    const auto end = std::find_if(run.begin(), run.end(), isSurrogate);
    const auto size = static_cast<std::size_t>(end - run.begin());
    convert(run.substr(0, size), out + at);
    at += size;
  }
  return bytes;
}

std::string toBytes(std::u16string_view text, unsigned codePage) {
  std::string bytes;
  while (!text.empty()) {
    auto run = text.substr(0, kChunk);
    if (run.size() < text.size() && isHighSurrogate(run.back())) run.remove_suffix(1);
    const auto convert = [&](char* out, std::size_t room) {
      return static_cast<std::size_t>(
          WideCharToMultiByte(codePage, 0, oleText(run.data()), static_cast<int>(run.size()), out,
                              static_cast<int>(room), nullptr, nullptr));
    };
    const std::size_t begin = bytes.size();
    const std::size_t size = convert(nullptr, 0);
    bytes.resize(begin + size);
    convert(bytes.data() + begin, size);
    text.remove_prefix(run.size());
  }
  return bytes;
}

std::u16string fromBytes(std::string_view bytes, unsigned codePage) {
  std::u16string text(bytes.size(), u'\0');  // no code page has more characters than bytes
  const int size = MultiByteToWideChar(codePage, 0, bytes.data(), static_cast<int>(bytes.size()),
                                       wideBuffer(text.data()), static_cast<int>(text.size()));
  text.resize(static_cast<std::size_t>(size));
  return text;
}

std::string toSystemBytes(std::u16string_view text) {
  return std::ranges::all_of(text, isAscii<char16_t>) ? toCodePage(text) : toBytes(text, CP_ACP);
}

std::u16string fromCodePage(std::string_view bytes) {
  if (std::ranges::all_of(bytes, isAscii<char>)) return {bytes.begin(), bytes.end()};
  return fromBytes(bytes, CP_ACP);
}

}  // namespace quendal::platform
