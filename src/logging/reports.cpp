// The report members: each appends the text of every entry to the page's variable as it writes it.
//
// Four of them skip a step that fails and go on; in the others an error ends the report and
// reaches the page.
#include "system/reports.h"

#include <cstdint>
#include <utility>

#include "base/text.h"
#include "core/apartment.h"
#include "logging/line_prefix.h"
#include "logging/logging.h"

namespace quendal {
namespace {

/// What follows an entry's text in the page's variable.
enum class EndOfText { None, LineEnd, LineEndWhenWritten };

constexpr std::u16string_view kNoRequestWarnings[] = {
    u"*** WARNING ***   ",
    u"*** WARNING ***   ASP Request object is not passed into COM DLL. Request.ServerVariables is "
    u"not available.",
    u"*** WARNING ***   ",
    u"*** WARNING ***   DEVELOPER NOTES: ",
    u"*** WARNING ***   ",
    u"*** WARNING ***   This is expected behavior if this is being run from an EXE instead of an "
    u"ASP web page.",
    u"*** WARNING ***   If this is run from an ASP web page, Server.CreateObject() should be used "
    u"instead of just CreateObject().",
    u"*** WARNING ***   ",
};

/// A member of the error that is pending on this thread, as a script's error object has it.
Variant pendingErrorMember(std::int32_t number, std::u16string_view name) {
  constexpr std::int32_t kGreatestScriptNumber = 0xFFFF;
  const AutomationError error = number > 0 && number <= kGreatestScriptNumber
                                    ? AutomationError(number)
                                    : AutomationError::fromRuntime(number);
  if (equalNoCase(name, u"Number")) return number;
  return equalNoCase(name, u"Source") ? error.source() : error.description();
}

}  // namespace

class Logging::Report final : public system::ReportWriter {
 public:
  Report(Logging& log, VariantRef& out, EndOfText end) noexcept : log_(log), out_(out), end_(end) {}
  Report(const Report&) = delete;
  Report& operator=(const Report&) = delete;
  ~Report() {
    ignoringErrors([this] { flush(); });
  }

  void entry(std::u16string_view text) override { handOver(log_.write(kLow, text)); }
  void parameter(const Variant& name, const Variant& value,
                 std::int16_t indent = kIndent) override {
    handOver(log_.writeRow(name, value, indent));
  }
  /// Appends what was written to what the variable holds by now. Raises 13 for one that cannot be
  /// text.
  void handOver(std::u16string_view written) {
    pending_ += written;
    if (end_ == EndOfText::LineEnd || (end_ == EndOfText::LineEndWhenWritten && !written.empty()))
      pending_ += kLineEnd;
    hasPending_ = true;
    // Each time makes the whole text anew; one that has become long grows by parts of its length.
    constexpr std::size_t kLong = 65'536;
    if (size_ < kLong || pending_.size() > size_ / 8) flush();
  }

  /// Hands over what is left; a report that raises its errors ends with it.
  void flush() {
    if (!std::exchange(hasPending_, false)) return;
    const std::u16string written = std::exchange(pending_, {});
    const std::u16string text = joinedTextOf(out_.value()) + written;
    size_ = text.size();
    out_.set(Variant(text));
  }

 private:
  std::u16string pending_;
  bool hasPending_ = false;
  std::size_t size_ = 0;  // of the variable's text
  Logging& log_;
  VariantRef& out_;
  EndOfText end_;
};

void Logging::reportConfiguration(Report& report) {
  clearError();
  ignoringErrors([&] { report.entry(u"LogConfiguration"); });
  const auto row = [&](std::u16string_view name, const Variant& value) {
    ignoringErrors([&] { report.parameter(name, value); });
  };
  row(u"Is ASP", isAsp());
  row(u"Log Level", logLevel());
  row(u"Log Path", path());
  row(u"Log File", fileName());
  row(u"Rollover Bytes", rolloverBytes());
  row(u"Unicode", unicode());
  row(u"Remote IP", remoteIp());
}

void Logging::reportServerVariables(Report& report) {
  report.entry(u"LogServerVariables: Enumerate through ASP Request.ServerVariables");
  if (const Object request = apartment().page.request) {
    forEach(request.get(u"ServerVariables"), [&](const Variant& element) {
      const std::u16string name = joinedTextOf(element);
      if (equalNoCase(name, u"ALL_RAW") || equalNoCase(name, u"ALL_HTTP")) return;
      report.parameter(name, serverVariable(name));
    });
  } else {
    for (const std::u16string_view warning : kNoRequestWarnings) report.entry(warning);
  }
  if (const std::int32_t number = pendingError(); number != 0) {
    Variant text = u"LogServerVariables: Generic error occurred.";
    report.handOver(
        caught([&](std::u16string_view name) { return pendingErrorMember(number, name); },
               VariantRef(&text), kLogRepeatSerious));
  }
}

Variant Logging::logConfiguration(DefaultedRef& out) {
  Report report(*this, out, EndOfText::None);
  reportConfiguration(report);
  return {};
}

Variant Logging::logSystemInfo(DefaultedRef& out) {
  Report report(*this, out, EndOfText::None);
  system::reportPlatform(report);
  return {};
}

Variant Logging::logOdbcDrivers(DefaultedRef& out) {
  Report report(*this, out, EndOfText::None);
  system::reportODBCDrivers(report);
  return {};
}

std::int32_t Logging::logOsInfo(DefaultedRef& out) {
  // A line end follows also an entry that was filtered out; deliberate.
  Report report(*this, out, EndOfText::LineEnd);
  system::reportSpecialFolders(report, osInfo_.object());
  return 0;
}

std::int32_t Logging::logFileVersionInfo(TextRef directory, DefaultedRef& out) {
  Report report(*this, out, EndOfText::LineEndWhenWritten);
  const std::int32_t status = system::reportFileVersions(report, std::u16string(directory.view()));
  report.flush();
  return status;
}

std::int32_t Logging::logWebApplicationDllInfo(DefaultedRef& out) {
  const Text folder(system::ownFolder());
  return logFileVersionInfo(TextRef(&folder), out);
}

std::int32_t Logging::logDictionary(const Object& dictionary, std::u16string_view title,
                                    std::int32_t level, DefaultedRef& out) {
  Report report(*this, out, EndOfText::LineEndWhenWritten);
  const std::int32_t status = system::reportDictionary(report, dictionary, title, level);
  report.flush();
  return status;
}

Variant Logging::logServerVariables(DefaultedRef& out) {
  Report report(*this, out, EndOfText::LineEndWhenWritten);
  reportServerVariables(report);
  report.flush();
  return {};
}

std::int32_t Logging::logDiagnostics(DefaultedRef& out) {
  Variant title = u"DIAGNOSTICS INFORMATION";
  DefaultedRef text(&title);
  std::int16_t level = kLow;
  Report(*this, out, EndOfText::LineEnd).handOver(writeBox(level, text));
  logConfiguration(out);
  logSystemInfo(out);
  logOdbcDrivers(out);
  logWebApplicationDllInfo(out);
  logServerVariables(out);
  logOsInfo(out);
  return 0;
}

}  // namespace quendal
