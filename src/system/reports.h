// Reports about the machine and about dictionaries, written through whatever keeps the log.
#pragma once

#include <quendal/object.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace quendal::system {

/// What a report needs of a log.
class EntryWriter {
 public:
  /// The indentation of a report's rows.
  static constexpr std::int16_t kReportIndent = 4;

  /// Writes one entry and returns its text, which is empty when the level filtered it out. Raises
  /// what the log raises.
  virtual std::u16string writeEntry(std::u16string_view text) = 0;
  /// The same for a name and a value on one line, aligned.
  virtual std::u16string writeParameter(const Variant& name, const Variant& value,
                                        std::int16_t indent) = 0;

 protected:
  ~EntryWriter() = default;
};

// Each report appends the texts of its entries to `text`. The first two append nothing between
// them, the third a line end after each, the others a line end after each that was written.

/// The facts of the platform information block. A step that fails is skipped.
void reportPlatform(EntryWriter& log, std::u16string& text);

/// The names of the installed ODBC drivers. A step that fails is skipped.
void reportODBCDrivers(EntryWriter& log, std::u16string& text);

/// The special folders, read from a `ClsOSInfo` object. A step that fails is skipped.
void reportSpecialFolders(EntryWriter& log, const Object& osInfo, std::u16string& text);

/// The product versions of a folder's files. Returns 0, -1 for a missing folder, or the number of
/// the last error; then no file is reported. Raises what the log raises.
std::int32_t reportFileVersions(EntryWriter& log, std::u16string_view directory,
                                std::u16string& text);

/// Keys and items of any object that offers `Keys` and `Item`; the title only at level 1. An item
/// that is an object is shown by the name of its type and then reported as a dictionary, one level
/// further in. Returns 0, or the level plus 1 when there was such an item. Raises what the log or
/// the dictionary raises, and 28 for dictionaries nested without end.
std::int32_t reportDictionary(EntryWriter& log, const Object& dictionary, std::u16string_view title,
                              std::int32_t level, std::u16string& text);

/// The folder of the library's own file, without the separator at the end.
[[nodiscard]] std::u16string ownFolder();

}  // namespace quendal::system
