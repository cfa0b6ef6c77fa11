// `LOGGING`: the diagnostic log writer that a page creates at its start.
//
// Every write member decides by level whether to write, makes sure of the log file, composes its
// lines and appends them. File and host failures reach the page as automation errors.
#pragma once

#include <quendal/object.h>

#include <cstdint>
#include <functional>
#include <string>

#include "core/class_description.h"
#include "core/dispatch.h"
#include "core/enumerations.h"
#include "core/variant_ref.h"
#include "logging/log_file.h"
#include "system/os_info.h"
#include "system/reports.h"

namespace quendal {

class Logging final {
 public:
  static constexpr std::u16string_view kClassName = u"LOGGING";
  static constexpr std::u16string_view kDumpTitle = u"TEXT DUMP BELOW";

  Logging();
  ~Logging();
  Logging(const Logging&) = delete;
  Logging& operator=(const Logging&) = delete;

  // Lifecycle. The host calls the first two; the last two are also what creation and destruction
  // do, and public for historical reasons.
  void onStartPage(const Object& scriptingContext);
  void onEndPage();
  void classInitialize();
  void classTerminate();

  // Settings and information.
  Boolean isAsp();
  Boolean unicode();
  void setUnicode(Ref<Boolean> value);
  std::int16_t logLevel();
  void setLogLevel(Ref<std::int16_t> level);
  std::int32_t rolloverBytes();
  void setRolloverBytes(Ref<std::int32_t> bytes);
  Variant path();
  Variant fileName();
  Variant remoteIp();
  Variant setLogPath(VariantRef& path);
  Variant setLogFile(VariantRef& file);
  Variant osInfo();
  Variant userName();
  Variant computerName();
  Variant pid();
  Variant threadId();
  Variant odbcDrivers();

  // Entries. Each returns the text it wrote, empty when the level filtered it out; `writeBox`
  // raises 91 then, before its text is read. `writeParam` raises 5 for a negative indent, the
  // groups raise 6 when their depth is exhausted.
  std::u16string writeBox(Ref<std::int16_t> level, DefaultedRef& text);
  std::u16string startGroup(Ref<std::int16_t> level);
  std::u16string endGroup(Ref<std::int16_t> level);
  std::u16string writeLog(Ref<std::int16_t> level, DefaultedRef& text, Ref<std::int16_t> repeat,
                          DefaultedRef& stamp);
  Variant writeParam(Ref<std::int16_t> level, const VariantRef& name, const VARIANT& value,
                     Ref<std::int16_t> distance, Ref<std::int16_t> indent);
  std::u16string dump(Ref<std::int16_t> level, DefaultedRef& multiline, TextRef title);

  // Error entries.
  std::u16string writeError(Ref<std::int16_t> level, DefaultedRef& text, Ref<std::int16_t> repeat);
  std::u16string logMsError(Ref<std::int16_t> level, const Object& error, DefaultedRef& text,
                            Ref<std::int16_t> repeat);
  std::u16string logXmlError(Ref<std::int16_t> level, const Object& document, DefaultedRef& text,
                             Ref<std::int16_t> repeat);
  std::u16string catchError(const Object& error, DefaultedRef& text, Ref<std::int16_t> repeat);

  // Page runs.
  std::u16string writeAspStart();
  std::u16string writeAspEnd();

  // Reports. Each appends the text it wrote to `out`.
  std::int32_t logOsInfo(DefaultedRef& out);
  std::int32_t logFileVersionInfo(TextRef directory, DefaultedRef& out);
  std::int32_t logDictionary(const Object& dictionary, std::u16string_view title,
                             std::int32_t level, DefaultedRef& out);
  Variant logServerVariables(DefaultedRef& out);
  std::int32_t logWebApplicationDllInfo(DefaultedRef& out);
  Variant logOdbcDrivers(DefaultedRef& out);
  Variant logConfiguration(DefaultedRef& out);
  Variant logSystemInfo(DefaultedRef& out);
  std::int32_t logDiagnostics(DefaultedRef& out);

 private:
  static constexpr std::int16_t kLow = kLogLevelLow;

  /// Reads a member of an error object by its name.
  using ErrorMember = std::function<Variant(std::u16string_view)>;
  /// Writes the entries of a report and hands their texts to the page.
  class Report;

  [[nodiscard]] bool passes(std::int16_t level) const noexcept { return level <= logLevel_; }
  [[nodiscard]] std::u16string linePrefix() const;
  /// Writes an entry once: `WriteLog` for the members that build on it.
  std::u16string write(std::int16_t level, std::u16string_view text);
  /// Appends an entry, its continuation lines beginning with a prefix, and returns it so. Errors
  /// that were ignored on its way are no longer pending.
  static std::u16string append(LogFile::Opened opened, std::u16string entry,
                               std::u16string_view prefix);
  /// `WriteParam` of a row in the usual place.
  std::u16string writeRow(const Variant& name, const Variant& value,
                          std::int16_t indent = system::ReportWriter::kIndent);

  // The entries that record a failure; each returns its texts run together. A page's text is read
  // anew each time that it is written.
  std::u16string criticalBanners(std::int16_t level, std::int16_t repeat);  // none for 1
  std::u16string markedError(std::int16_t level, const VariantRef& text);
  std::u16string markedErrorIfAny(std::int16_t level, const VariantRef& text);
  std::u16string errorDetails(std::int16_t level, const ErrorMember& member);
  std::u16string caught(const ErrorMember& member, const VariantRef& text, std::int16_t repeat);

  /// The reports on what only the logger knows.
  void reportConfiguration(Report& report);
  void reportServerVariables(Report& report);

  bool inPage_ = false;
  LogFile file_;
  std::int16_t logLevel_ = 0;
  std::u16string remoteAddress_;
  Owned<OsInfo> osInfo_;
};

template <>
const ClassDescription& describe<Logging>();

}  // namespace quendal
