// Reports about the machine and about dictionaries, written through whatever keeps the log.
#pragma once

#include <quendal/object.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace quendal::system {

/// What a report is written to: a log, which may also hand each entry's text to a page. Raises what
/// either raises.
class ReportWriter {
 public:
  static constexpr std::int16_t kIndent = 4;

  virtual void entry(std::u16string_view text) = 0;
  /// A name and a value on one line, aligned.
  virtual void parameter(const Variant& name, const Variant& value,
                         std::int16_t indent = kIndent) = 0;

 protected:
  ~ReportWriter() = default;
};

/// The facts of the platform information block. A step that fails is skipped.
void reportPlatform(ReportWriter& report);

/// The names of the installed ODBC drivers. A step that fails is skipped.
void reportODBCDrivers(ReportWriter& report);

/// The special folders, read from a `ClsOSInfo` object. A step that fails is skipped.
void reportSpecialFolders(ReportWriter& report, const Object& osInfo);

/// The product versions of a folder's files. Returns 0, -1 for a missing folder, or the number of
/// the last error; then no file is reported. Raises what the writer raises.
std::int32_t reportFileVersions(ReportWriter& report, std::u16string_view directory);

/// Keys and items of any object that offers `Keys` and `Item`; the title only at level 1. An item
/// that is an object is shown by the name of its type and then reported as a dictionary, one level
/// further in. Returns 0, or the level plus 1 when there was such an item. Raises what the writer
/// or the dictionary raises, 28 for a dictionary inside itself or nested deeper than the stack
/// reaches, 6 for an indent beyond 16 bits.
std::int32_t reportDictionary(ReportWriter& report, const Object& dictionary,
                              std::u16string_view title, std::int32_t level);

/// The folder of the library's own file, without the separator at the end.
[[nodiscard]] std::u16string ownFolder();

}  // namespace quendal::system
