// The report members: each hands the text it wrote to the caller by appending it to `out`.
//
// Four of them skip a step that fails and go on; in the others an error ends the report and
// reaches the page, after the text gathered so far was handed over.
#include "system/reports.h"

#include "core/apartment.h"
#include "core/text_tools.h"
#include "logging/line_prefix.h"
#include "logging/logging.h"

namespace quendal {
namespace {

constexpr auto kLow = static_cast<std::int16_t>(LogLevel::Low);
constexpr std::int16_t kDistance = 35;

void append(VariantRef& out, std::u16string_view text) {
  out.set(Variant(joinedTextOf(out.value()).append(text)));
}

/// Runs a report that raises its errors.
template <class Report>
std::int32_t handBack(VariantRef& out, Report&& report) {
  std::u16string text;
  std::int32_t status = 0;
  try {
    status = report(text);
  } catch (...) {
    ignoringErrors([&] { append(out, text); });
    throw;
  }
  append(out, text);
  return status;
}

/// Runs a report that skips what fails.
template <class Report>
void handBackWhatWorks(VariantRef& out, Report&& report) {
  std::u16string text;
  report(text);
  ignoringErrors([&] { append(out, text); });
}

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

std::u16string Logging::writeEntry(std::u16string_view text) { return write(kLow, text); }

std::u16string Logging::writeParameter(const Variant& name, const Variant& value,
                                       std::int16_t indent) {
  return parameter(kLow, name, value, kDistance, indent);
}

void Logging::reportConfiguration(std::u16string& text) {
  clearError();
  ignoringErrors([&] { text += writeEntry(u"LogConfiguration"); });
  const auto row = [&](std::u16string_view name, const Variant& value) {
    ignoringErrors([&] { text += writeParameter(name, value, kReportIndent); });
  };
  row(u"Is ASP", isAsp());
  row(u"Log Level", logLevel());
  row(u"Log Path", path());
  row(u"Log File", fileName());
  row(u"Rollover Bytes", rolloverBytes());
  row(u"Unicode", unicode());
  row(u"Remote IP", remoteIp());
}

void Logging::reportServerVariables(std::u16string& text) {
  const auto add = [&text](const std::u16string& entry) {
    if (!entry.empty()) text.append(entry).append(kLineEnd);
  };
  add(writeEntry(u"LogServerVariables: Enumerate through ASP Request.ServerVariables"));
  if (const Object request = apartment().page.request) {
    forEach(request.get(u"ServerVariables"), [&](const Variant& element) {
      const std::u16string name = joinedTextOf(element);
      if (equalNoCase(name, u"ALL_RAW") || equalNoCase(name, u"ALL_HTTP")) return;
      add(writeParameter(name, serverVariable(name), kReportIndent));
    });
  } else {
    for (const std::u16string_view warning : kNoRequestWarnings) add(writeEntry(warning));
  }
  if (const std::int32_t number = pendingError(); number != 0) {
    add(caught([&](std::u16string_view name) { return pendingErrorMember(number, name); },
               u"LogServerVariables: Generic error occurred.",
               static_cast<std::int16_t>(LogRepeat::Serious)));
  }
}

Variant Logging::logConfiguration(DefaultedRef& out) {
  handBackWhatWorks(out, [&](std::u16string& text) { reportConfiguration(text); });
  return {};
}

Variant Logging::logSystemInfo(DefaultedRef& out) {
  handBackWhatWorks(out, [&](std::u16string& text) { system::reportPlatform(*this, text); });
  return {};
}

Variant Logging::logOdbcDrivers(DefaultedRef& out) {
  handBackWhatWorks(out, [&](std::u16string& text) { system::reportODBCDrivers(*this, text); });
  return {};
}

std::int32_t Logging::logOsInfo(DefaultedRef& out) {
  handBackWhatWorks(out, [&](std::u16string& text) {
    system::reportSpecialFolders(*this, osInfo_.object(), text);
  });
  return 0;
}

std::int32_t Logging::logFileVersionInfo(TextRef directory, DefaultedRef& out) {
  return handBack(out, [&](std::u16string& text) {
    return system::reportFileVersions(*this, directory.view, text);
  });
}

std::int32_t Logging::logWebApplicationDllInfo(DefaultedRef& out) {
  return handBack(out, [&](std::u16string& text) {
    return system::reportFileVersions(*this, system::ownFolder(), text);
  });
}

std::int32_t Logging::logDictionary(const Object& dictionary, std::u16string_view title,
                                    std::int32_t level, DefaultedRef& out) {
  return handBack(out, [&](std::u16string& text) {
    return system::reportDictionary(*this, dictionary, title, level, text);
  });
}

Variant Logging::logServerVariables(DefaultedRef& out) {
  handBack(out, [&](std::u16string& text) {
    reportServerVariables(text);
    return 0;
  });
  return {};
}

std::int32_t Logging::logDiagnostics(DefaultedRef& out) {
  return handBack(out, [&](std::u16string& text) {
    text.append(box(kLow, Variant(u"DIAGNOSTICS INFORMATION"))).append(kLineEnd);
    reportConfiguration(text);
    system::reportPlatform(*this, text);
    system::reportODBCDrivers(*this, text);
    system::reportFileVersions(*this, system::ownFolder(), text);
    reportServerVariables(text);
    system::reportSpecialFolders(*this, osInfo_.object(), text);
    return 0;
  });
}

}  // namespace quendal
