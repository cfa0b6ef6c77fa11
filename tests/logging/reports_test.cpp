// The reports: what they write, and what they hand back.
#include <algorithm>

#include "base/text.h"
#include "base/utf8.h"
#include "core/apartment.h"
#include "core/dictionary.h"
#include "platform/module.h"
#include "support/pe_builder.h"
#include "support/threads.h"
#include "system/platform_block.h"
#include "tests/logging/logger_fixture.h"

namespace quendal::test {
namespace {

/// A row of a report.
std::string row(std::string_view name, std::string_view value, std::size_t indent = 4) {
  return "@ " + std::string(indent, ' ').append(name) + " " + std::string(34 - name.size(), '.') +
         " " + std::string(value) + "\n";
}

class Reports : public LoggerTest {
 protected:
  /// Calls a report, its variable for the text last, and gives what it wrote; an error as a line of
  /// its own at the end. `text` is what was handed back, `result` what was returned.
  std::string report(std::u16string_view member, std::vector<Variant> arguments = {}) {
    Variant out = u"<";
    arguments.push_back(referenceTo(out));
    result = {};
    const std::string error = textOrError([&] {
      result = log.callWith(member, arguments);
      return std::string();
    });
    text = masked(out).substr(1);
    return written() + error;
  }
  std::string reportDictionary(const Object& dictionary, std::int32_t level = 1) {
    return report(u"LogDictionary", {dictionary, u"Title", level});
  }

  std::string text;
  Variant result;
};

TEST_F(Reports, ConfigurationPlatformAndDriversAreHandedBackRunTogether) {
  std::string platform = "@ Platform Information\n";
  for (const system::PlatformFact& fact : system::platformFacts())
    platform += row(toUtf8(fact.label), toUtf8(fact.value));
  std::string drivers = "@ ODBC Drivers\n";
  forEach(Object::from(log.get(u"ODBCDrivers")).get(u"Keys"),
          [&](const Variant& name) { drivers += "@ \t" + toUtf8(textOf(name)) + "\n"; });
  const std::pair<std::u16string_view, std::string> rows[] = {
      {u"LogConfiguration", "@ LogConfiguration\n" + row("Is ASP", "False") +
                                row("Log Level", "2") + row("Log Path", toUtf8(folder / u"")) +
                                row("Log File", "log.txt") + row("Rollover Bytes", "5242880") +
                                row("Unicode", "True") + row("Remote IP", "")},
      {u"LogSystemInfo", platform},
      {u"LogODBCDrivers", drivers}};
  for (const auto& [member, expected] : rows) {
    EXPECT_EQ(report(member), expected);
    EXPECT_EQ(text, runTogether(expected));
    EXPECT_EQ(result.vt, VT_EMPTY);
  }
}

TEST_F(Reports, TheSpecialFoldersAreToldByTheirLabels) {
  const std::string title = "@ LogOSInfo: List Special Folders\n";
  const std::string told = report(u"LogOSInfo");
  EXPECT_EQ(text, told);
  EXPECT_EQ(int32Of(result), 0);
  EXPECT_TRUE(told.starts_with(title));
  EXPECT_EQ(std::ranges::count(told, '\n'), 37);
  for (const auto& [label, id] : {std::pair("My Documents", 5), std::pair("Favourites", 6),
                                  std::pair("Send To...", 9), std::pair("Ie Cookies", 33)})
    EXPECT_NE(told.find("\n" + row(label, toUtf8(system::querySpecialFolder(id)))), told.npos);
  log.call(u"Class_Terminate");  // then there is no object to ask: every row is skipped
  EXPECT_EQ(report(u"LogOSInfo"), title);
}

const std::string kVariablesTitle =
    "@ LogServerVariables: Enumerate through ASP Request.ServerVariables\n";

TEST_F(Reports, WithoutARequestTheServerVariablesAreAWarning) {
  std::string expected = kVariablesTitle;
  for (const std::string_view line :
       {"",
        "ASP Request object is not passed into COM DLL. Request.ServerVariables is not available.",
        "", "DEVELOPER NOTES: ", "",
        "This is expected behavior if this is being run from an EXE instead of an ASP web page.",
        "If this is run from an ASP web page, Server.CreateObject() should be used instead of just "
        "CreateObject().",
        ""})
    expected.append("@ *** WARNING ***   ").append(line) += '\n';
  EXPECT_EQ(report(u"LogServerVariables"), expected);
  EXPECT_EQ(text, expected);
}

TEST_F(Reports, ServerVariablesAreToldInTheirOrder) {
  PageContext page;
  page.serverVariables = {{u"ALL_HTTP", u"hidden"},
                          {u"URL", u"/a.asp"},
                          {u"all_raw", u"hidden"},
                          {u"CONTENT_LENGTH", std::int32_t{0}},
                          {u"AUTH_USER", Variant::null()}};
  startPage(page);
  const std::string rows =
      kVariablesTitle + row("URL", "/a.asp") + row("CONTENT_LENGTH", "0") + row("AUTH_USER", "");
  EXPECT_EQ(report(u"LogServerVariables"), rows);
  EXPECT_EQ(text, rows);
  // One that the collection raises reaches the page, after what was written was handed back.
  page.atEnd = [] { throw AutomationError(70); };
  EXPECT_EQ(report(u"LogServerVariables"), rows + "error 70");
  EXPECT_EQ(text, rows);
  // An error of the library that is still pending after the last variable is caught.
  const std::pair<std::int32_t, std::string> pending[] = {{9, "Subscript out of range"},
                                                          {E_OUTOFMEMORY, "Out of memory"}};
  for (const auto& [number, description] : pending) {
    page.atEnd = [&number = number] { apartment().errorNumber = number; };
    const std::string told = report(u"LogServerVariables");
    EXPECT_EQ(runTogether(text), runTogether(told));
    EXPECT_EQ(std::ranges::count(told, '\n'), std::ranges::count(rows, '\n') + 20 + 4);
    EXPECT_TRUE(told.ends_with(
        "critical error.\n@ *** ERROR *** LogServerVariables: Generic error occurred.\n"
        "@ *** Microsoft Error Code    *** = " +
        std::to_string(number) +
        "\n@ *** Microsoft Error Source  *** = QUENDAL_REPORTS_ASP\n"
        "@ *** Microsoft Error Message *** = " +
        description + "\n"))
        << told;
  }
}

TEST_F(Reports, FilesAreToldByTheirVersions) {
  const platform::TempFolder files;
  const auto head = [](std::u16string_view directory) {
    return "@ LogFileVersionInfo\n" + row("IN_szDirectory", toUtf8(directory));
  };
  const Bytes image = englishImage({{u"ProductVersion", u"1.2"}});
  for (const std::u16string_view name : {u"a.exe", u"b.dll"})
    EXPECT_EQ(platform::createFile(files / name, image), platform::FileError::None);
  const std::string a = row("a.exe", "1.2"), b = row("b.dll", "1.2");
  for (const std::u16string& directory : {files.path(), files / u""}) {
    const std::string log = report(u"LogFileVersionInfo", {directory});
    EXPECT_TRUE(log == head(directory) + a + b || log == head(directory) + b + a) << log;
    EXPECT_EQ(text, log);
    EXPECT_EQ(int32Of(result), 0);
  }
  EXPECT_EQ(report(u"LogFileVersionInfo", {files / u"none"}), head(files / u"none"));
  EXPECT_EQ(int32Of(result), -1);
  const std::u16string own = platform::ownModulePath();
  const std::string log = report(u"LogWebApplicationDLLInfo");
  EXPECT_TRUE(log.starts_with(head(own.substr(0, own.find_last_of(u"\\/"))))) << log;
  EXPECT_EQ(text, log);
}

TEST_F(Reports, DictionariesAreToldInTheirOrderAndNestedOnesIndented) {
  const Dictionary inner = Dictionary::create();
  inner.add(u"colour", u"red\r\ngreen");
  const Dictionary outer = Dictionary::create();
  outer.add(std::int16_t{7}, 2.5);
  outer.add(u"", Variant::null());
  outer.add(u"inner", inner.object());
  outer.add(u"flag", Boolean::True);
  outer.add(u"again", inner.object());
  for (const std::int32_t level : {1, 3}) {  // deeper levels have no title
    const std::size_t indent = static_cast<std::size_t>(level) * 4;
    const std::string nested =
        row("colour", "red", indent + 4) + "@ " + std::string(indent + 40, ' ') + "green\n";
    EXPECT_EQ(reportDictionary(outer.object(), level),
              (level == 1 ? "@ Title\n" : "") + row("7", "2.5", indent) + row("", "", indent) +
                  row("inner", "Dictionary", indent) + nested + row("flag", "True", indent) +
                  row("again", "Dictionary", indent) + nested);
    EXPECT_EQ(int32Of(result), level + 1);
  }
  EXPECT_EQ(call(u"LogDictionary", Dictionary::create().object()), "0");
  EXPECT_EQ(written(), "@ LogDictionary: Dictionary\n");
  // Anything with keys and items will do.
  const std::vector<Variant> keys = {u"a", std::int32_t{2}};
  for (const Variant& list : {arrayOf(keys), Variant(ScriptObject().elements(keys).object())}) {
    const Object mine = ScriptObject()
                            .value(u"Keys", list)
                            .member(u"Item", [](auto key) { return u"of " + textOf(key[0]); })
                            .object();
    EXPECT_EQ(reportDictionary(mine), "@ Title\n" + row("a", "of a") + row("2", "of 2"));
  }
}

TEST_F(Reports, WhatCannotBeToldEndsTheReportAfterWholeLines) {
  const auto with = [](const Variant& key, const Variant& item) {
    const Dictionary dictionary = Dictionary::create();
    dictionary.add(u"first", u"1");
    dictionary.add(key, item);
    return dictionary.object();
  };
  const std::string title = "@ Title\n";
  const std::string first = title + row("first", "1");
  const Object plain = ScriptObject().object();
  const struct {
    Object dictionary;
    std::int32_t level;
    std::string log;
  } rows[] = {
      {with(u"array", arrayOf({u"a"})), 1, first + "error 13"},
      {with(u"nothing", Object()), 1, first + row("nothing", "Nothing") + "error 91"},
      {plain, 1, title + "error 438"},
      {ScriptObject().value(u"Keys", std::int32_t{5}).object(), 1, title + "error 451"},
      {with(u"a", u"b"), -1, "error 5"},
      {with(u"a", u"b"), 8'192, "error 6"},
  };
  for (const auto& [dictionary, level, expected] : rows) {
    EXPECT_EQ(reportDictionary(dictionary, level), expected);
    EXPECT_EQ(text, expected.substr(0, expected.rfind("error")));
  }
}

TEST_F(Reports, NestingWithoutEndIsAnError) {
  std::function<Object()> endless = [&endless] {
    return ScriptObject()
        .value(u"Keys", arrayOf({u"next"}))
        .member(u"Item", [&](auto) { return Variant(endless()); })
        .object();
  };
  onSmallStack([&] { EXPECT_TRUE(reportDictionary(endless()).ends_with("error 28")); });
  Object nested = Dictionary::create().object();
  for (int i = 0; i < 100; ++i) {
    const Dictionary outer = Dictionary::create();
    outer.add(u"inner", nested);
    nested = outer.object();
  }
  EXPECT_EQ(std::ranges::count(reportDictionary(nested), '\n'), 1 + 100);
}

TEST_F(Reports, TheDiagnosticsAreABoxAndSixReports) {
  const std::string all = report(u"LogDiagnostics");
  const std::string allText = text;
  EXPECT_EQ(int32Of(result), 0);
  std::string expected = call(u"WriteBox", kLow, u"DIAGNOSTICS INFORMATION") + "\n";
  std::string expectedText = expected;
  static_cast<void>(written());
  for (const std::u16string_view member :
       {u"LogConfiguration", u"LogSystemInfo", u"LogODBCDrivers", u"LogWebApplicationDLLInfo",
        u"LogServerVariables", u"LogOSInfo"}) {
    expected += report(member);
    expectedText += text;
  }
  EXPECT_EQ(all, expected);
  EXPECT_EQ(allText, expectedText);
}

TEST_F(Reports, TheTextIsAppendedToAVariableOfAnyKind) {
  report(u"LogODBCDrivers");
  const std::pair<Variant, std::string> rows[] = {{Variant::null(), text},
                                                  {std::int32_t{7}, "7" + text}};
  for (const auto& [before, after] : rows) {
    Variant variable = before;
    log.call(u"LogODBCDrivers", referenceTo(variable));
    EXPECT_EQ(masked(variable), after);
  }
  Variant large = std::u16string(1'000'000, u'x');  // which grows by more than an entry at a time
  log.call(u"LogOSInfo", referenceTo(large));
  report(u"LogOSInfo");
  EXPECT_EQ(masked(large).substr(1'000'000), text);

  // A variable that no text can be appended to: a step that is skipped, or an error.
  EXPECT_EQ(call(u"LogODBCDrivers", arrayOf({u"a"})), "");
  static_cast<void>(written());
  EXPECT_EQ(lines(u"LogFileVersionInfo", u"", arrayOf({u"a"})), "@ LogFileVersionInfo\nerror 13");
}

TEST_F(Reports, FourReportsSkipWhatFailsAndTheOthersRaise) {
  log.put(u"LogLevel", std::int16_t{1});  // everything is filtered out
  const std::pair<std::u16string_view, std::string> filtered[] = {
      {u"LogConfiguration", ""},        {u"LogSystemInfo", ""},
      {u"LogODBCDrivers", ""},          {u"LogOSInfo", std::string(37, '\n')},
      {u"LogDiagnostics", ""},          {u"LogServerVariables", ""},
      {u"LogWebApplicationDLLInfo", ""}};
  for (const auto& [member, expected] : filtered) {
    EXPECT_EQ(report(member), member == u"LogDiagnostics" ? "error 91" : "");  // as its box
    EXPECT_EQ(text, expected) << toUtf8(member);
  }
  log.put(u"LogLevel", kLow);
  log.call(u"SetLogFile", u"missing\\log.txt");
  int index = 0;
  for (const auto& [member, expected] : filtered) {
    EXPECT_EQ(report(member), index++ < 4 ? "" : "error 76") << toUtf8(member);
    EXPECT_EQ(text, "");
    EXPECT_EQ(pendingError(), 76);
  }
}

}  // namespace
}  // namespace quendal::test
