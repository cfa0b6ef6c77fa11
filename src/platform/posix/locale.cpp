#include "platform/locale.h"

#include <locale.h>
#include <wctype.h>

#include <cstdint>

#include "base/characters.h"
#include "base/date_pattern.h"
#include "base/number_pattern.h"
#include "platform/posix/locale_table.h"

namespace quendal::platform {
namespace {

// The environment's locale, as it was when first asked for: like the C library, a process keeps
// the one it started with.
const LocaleTable& userLocale() {
  static const LocaleTable table(localeNamesOfEnvironment());
  return table;
}

std::size_t readItem(std::uint32_t item, std::span<char16_t> out) {
  return userLocale().item(item).copy(out.data(), out.size());
}

// Case tables for all of Unicode, whatever locale the host has chosen; null where the system has
// none, and then only ASCII letters have a case.
locale_t unicodeLocale() noexcept {
  static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", locale_t{});
  return locale;
}

// Unit by unit; what has no single unit of the other case stays.
template <typename Ascii>
std::u16string changeCase(std::u16string_view text, Ascii ascii,
                          wint_t (*convert)(wint_t, locale_t)) {
  std::u16string out(text);
  const locale_t locale = unicodeLocale();
  for (char16_t& unit : out) {
    if (isAscii(unit)) {
      unit = ascii(unit);
    } else if (locale != locale_t{}) {  // in which surrogates have no case
      const wint_t other = convert(unit, locale);
      if (other <= 0xFFFF) unit = static_cast<char16_t>(other);
    }
  }
  return out;
}

}  // namespace

std::u16string localeText(std::uint32_t item) { return std::u16string(userLocale().item(item)); }

std::u16string formatDate(double date, std::u16string_view pattern) {
  return formatDatePattern(date, pattern, readItem);
}

std::u16string formatNumber(double value, int decimals) {
  return formatNumberPattern(value, decimals, readItem);
}

std::u16string upperCase(std::u16string_view text) {
  return changeCase(text, asciiUpper, towupper_l);
}

std::u16string lowerCase(std::u16string_view text) {
  return changeCase(text, asciiLower, towlower_l);
}

}  // namespace quendal::platform
