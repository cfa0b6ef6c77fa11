// The version resource of an executable file: the fixed record, the translations and the string
// tables. On Windows the system's functions read it; elsewhere our own reader of the same format
// does, which reads only the few pieces of the file that it needs and trusts no offset or length.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/text.h"

namespace quendal::platform {

/// The fixed file information record, as published.
struct FixedFileInfo {
  std::uint32_t signature = 0;
  std::uint32_t structureVersion = 0;
  std::uint32_t fileVersionHigh = 0;
  std::uint32_t fileVersionLow = 0;
  std::uint32_t productVersionHigh = 0;
  std::uint32_t productVersionLow = 0;
  std::uint32_t flagsMask = 0;
  std::uint32_t flags = 0;
  std::uint32_t operatingSystem = 0;
  std::uint32_t type = 0;
  std::uint32_t subtype = 0;
  std::uint32_t dateHigh = 0;
  std::uint32_t dateLow = 0;
};

struct Translation {
  std::uint16_t language = 0;
  std::uint16_t codePage = 0;
};

/// The name of the string table of a language and code page: both with four digits.
[[nodiscard]] inline std::u16string tableKey(Translation table) {
  return hexText(table.language, 4) + hexText(table.codePage, 4);
}

/// A version resource that was read. Text comes back through the code page, as the system's
/// single-byte functions give it.
class VersionResource {
 public:
  virtual ~VersionResource() = default;

  /// The fixed record, unchecked; nothing when the resource has none or a shorter one.
  [[nodiscard]] virtual std::optional<FixedFileInfo> fixedInfo() const = 0;

  /// The first entry of the translation list; nothing when there is none.
  [[nodiscard]] virtual std::optional<Translation> firstTranslation() const = 0;

  /// The value `key` (ASCII) of the string table of a language and code page, up to its first NUL;
  /// the empty string when there is no such table or key. Names are compared without case.
  [[nodiscard]] virtual std::u16string string(Translation table, std::u16string_view key) const = 0;
};

/// Reads the version resource of a file; the file is closed again on return. Null when the file
/// cannot be read, is no executable image (PE32, PE32+) or has none. Of several languages Windows
/// takes the one that it prefers for the user; elsewhere it is neutral, English, the first.
[[nodiscard]] std::unique_ptr<VersionResource> readVersionResource(std::u16string_view path);

/// Name of a language identifier in the form that the system gives it: "English" for 0x0409, with
/// the country behind it on some systems. The neutral language (0) has the name that the system
/// gives it; on POSIX it is English. Empty for an identifier that the system does not know.
[[nodiscard]] std::u16string languageName(std::uint16_t language);

}  // namespace quendal::platform
