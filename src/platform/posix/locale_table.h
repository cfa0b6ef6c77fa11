// The texts of one locale by the platform's item numbers, gathered from the C library's.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace quendal::platform {

/// Names of the C library's locales that the texts are taken from ("de_DE.UTF-8").
struct LocaleNames {
  std::string time;
  std::string numeric;
  std::string monetary;
  std::string language;
};

/// The names that the environment sets: LC_ALL, else LC_TIME and the like, else LANG. Empty where
/// nothing is set.
[[nodiscard]] LocaleNames localeNamesOfEnvironment();

/// Immutable once built. A name that is empty, "C", "POSIX" or American English, and one that the
/// system has no locale for, stands for English (United States) with the texts that the platform
/// gives there; what the C library does not know of a locale stays as it is there.
class LocaleTable {
 public:
  using Items = std::map<std::uint32_t, std::u16string>;

  explicit LocaleTable(const LocaleNames& names);

  /// An item's text, at most 98 characters; empty when there is no such item.
  [[nodiscard]] std::u16string_view item(std::uint32_t number) const noexcept;

 private:
  Items items_;
};

}  // namespace quendal::platform
