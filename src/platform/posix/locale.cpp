#include "platform/locale.h"

#include <locale.h>
#include <wctype.h>

#include <algorithm>

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

constexpr bool isSurrogate(wint_t c) { return (c & ~0x7FFu) == 0xD800; }

char16_t convertUnit(char16_t unit, locale_t locale, wint_t (*convert)(wint_t, locale_t)) noexcept {
  if (locale == locale_t{} || isSurrogate(unit)) return unit;
  const wint_t other = convert(unit, locale);
  return other <= 0xFFFF && !isSurrogate(other) ? static_cast<char16_t>(other) : unit;
}

char16_t upperUnit(char16_t unit, locale_t locale) noexcept {
  if (unit < 0x80) return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - 32) : unit;
  return convertUnit(unit, locale, towupper_l);
}

char16_t lowerUnit(char16_t unit, locale_t locale) noexcept {
  if (unit < 0x80) return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
  return convertUnit(unit, locale, towlower_l);
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
  std::u16string out(text);
  const locale_t locale = unicodeLocale();
  for (char16_t& unit : out) unit = upperUnit(unit, locale);
  return out;
}

std::u16string lowerCase(std::u16string_view text) {
  std::u16string out(text);
  const locale_t locale = unicodeLocale();
  for (char16_t& unit : out) unit = lowerUnit(unit, locale);
  return out;
}

// The order of the lower-case code units; the system has no order without case of its own.
int compareTextNoCase(std::u16string_view a, std::u16string_view b) noexcept {
  const locale_t locale = unicodeLocale();
  const std::size_t common = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < common; ++i) {
    if (a[i] == b[i]) continue;
    const int difference = lowerUnit(a[i], locale) - lowerUnit(b[i], locale);
    if (difference != 0) return difference;
  }
  return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

}  // namespace quendal::platform
