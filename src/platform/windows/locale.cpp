#include "platform/locale.h"

#include <array>
#include <cstdint>

#include "base/characters.h"
#include "base/date_pattern.h"
#include "base/number_pattern.h"
#include "platform/code_page.h"
#include "platform/windows/wide.h"

namespace quendal::platform {
namespace {

// The wide form, for texts that go into dates: those keep letters the code page lacks.
std::size_t readItem(std::uint32_t item, std::span<char16_t> out) {
  const int written = GetLocaleInfoW(LOCALE_USER_DEFAULT, item, wideBuffer(out.data()),
                                     static_cast<int>(out.size()));
  return written > 0 ? static_cast<std::size_t>(written) - 1 : 0;  // counted with its terminator
}

// Turns ASCII letters in place and the rest of the text, from the first other character on,
// through the system.
template <typename Ascii, typename System>
std::u16string changeCase(std::u16string_view text, Ascii ascii, System system) {
  std::u16string out(text);
  for (std::size_t i = 0; i < out.size(); ++i) {
    if (!isAscii(out[i])) {
      system(wideBuffer(out.data() + i), static_cast<DWORD>(out.size() - i));
      break;
    }
    out[i] = ascii(out[i]);
  }
  return out;
}

}  // namespace

std::u16string localeText(std::uint32_t item) {
  std::array<char, 100> buffer{};  // one more than is offered, so there is always a NUL
  // What the call left in the buffer is the answer, whether it succeeds or not.
  GetLocaleInfoA(LOCALE_USER_DEFAULT, item, buffer.data(), 99);
  return fromCodePage(buffer.data());
}

std::u16string formatDate(double date, std::u16string_view pattern) {
  return formatDatePattern(date, pattern, readItem);
}

std::u16string formatNumber(double value, int decimals) {
  return formatNumberPattern(value, decimals, readItem);
}

std::u16string upperCase(std::u16string_view text) {
  return changeCase(text, asciiUpper, CharUpperBuffW);
}

std::u16string lowerCase(std::u16string_view text) {
  return changeCase(text, asciiLower, CharLowerBuffW);
}

}  // namespace quendal::platform
