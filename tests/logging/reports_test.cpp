// The reports: what they write, and what they hand back.
#include <algorithm>

#include "base/text.h"
#include "base/utf8.h"
#include "core/apartment.h"
#include "core/dictionary.h"
#include "platform/module.h"
#include "support/pe_builder.h"
#include "support/text_rows.h"
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
  std::string expected = "@ LogOSInfo: List Special Folders\n";
  forEachPair(
      u"My Documents=5|My Pictures=39|My Music=13|My Videos=14|Common Documents=46|"
      u"Common Pictures=54|Common Music=53|Common Videos=55|Start Menu=11|Programs=2|Startup=7|"
      u"Common Start Menu=22|Common Programs=23|Common Startup=24|Desktop=16|Favourites=6|"
      u"Recent Documents=8|Send To...=9|Templates=21|Common Desktop=25|Common Favourites=31|"
      u"Common Templates=45|Application Data=26|Local Application Data=28|"
      u"Common Application Data=35|Temporary Internet Files=32|Ie Cookies=33|Ie History=34|"
      u"Windows Directory=36|System Directory=37|Fonts=20|Program Files=38|Common Files=43|"
      u"User Profile=40|Admin Tools=48|Common Admin Tools=47",
      [&expected](std::u16string_view label, const std::string& id) {
        expected += row(toUtf8(label), toUtf8(system::querySpecialFolder(std::stoi(id))));
      });
  EXPECT_EQ(report(u"LogOSInfo"), expected);
  EXPECT_EQ(text, expected);
  EXPECT_EQ(int32Of(result), 0);
  log.call(u"Class_Terminate");  // then there is no object to ask: every row is skipped
  EXPECT_EQ(report(u"LogOSInfo"), "@ LogOSInfo: List Special Folders\n");
}

const std::string kVariablesTitle =
    "@ LogServerVariables: Enumerate through ASP Request.ServerVariables\n";

TEST_F(Reports, WithoutARequestTheServerVariablesAreAWarning) {
  const std::string warning = "@ *** WARNING ***   ";
  const std::string expected =
      kVariablesTitle + warning + "\n" + warning +
      "ASP Request object is not passed into COM DLL. Request.ServerVariables is not "
      "available.\n" +
      warning + "\n" + warning + "DEVELOPER NOTES: \n" + warning + "\n" + warning +
      "This is expected behavior if this is being run from an EXE instead of an ASP web "
      "page.\n" +
      warning +
      "If this is run from an ASP web page, Server.CreateObject() should be used instead "
      "of just CreateObject().\n" +
      warning + "\n";
  EXPECT_EQ(report(u"LogServerVariables"), expected);
  EXPECT_EQ(text, expected);
  EXPECT_EQ(result.vt, VT_EMPTY);
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
    std::string expected = rows;
    for (int i = 0; i < 20; ++i)
      expected += "@ *** ERROR ***  *** ERROR ***  Tolvex has detected a critical error.\n";
    expected += "@ *** ERROR *** LogServerVariables: Generic error occurred.\n";
    expected += "@ *** Microsoft Error Code    *** = " + std::to_string(number) + "\n";
    expected += "@ *** Microsoft Error Source  *** = QUENDAL_REPORTS_ASP\n";
    expected += "@ *** Microsoft Error Message *** = " + description + "\n";
    EXPECT_EQ(report(u"LogServerVariables"), expected);
    EXPECT_EQ(runTogether(text), runTogether(expected));
  }
}

TEST_F(Reports, FilesAreToldByTheirVersions) {
  const platform::TempFolder files;
  const auto head = [](std::u16string_view directory) {
    return "@ LogFileVersionInfo\n" + row("IN_szDirectory", toUtf8(directory));
  };
  for (const std::u16string name : {u"a.exe", u"b.dll"}) {
    VersionParts parts;
    parts.translations = {0x04B00409};
    parts.tables = {{u"040904B0", {{u"ProductVersion", u"of " + name}}}};
    EXPECT_EQ(
        platform::createFile(files / name, peImage(PeKind::Pe32, {{0x0409, versionBlock(parts)}})),
        platform::FileError::None);
  }
  EXPECT_EQ(platform::createFolder(files / u"sub"), platform::FileError::None);
  for (int i = 0; i < 1000; ++i)
    static_cast<void>(platform::createFile(files / (u"f" + decimalText(i)), {}));
  const std::string a = row("a.exe", "of a.exe"), b = row("b.dll", "of b.dll");
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
  outer.add(u"text", u"value");
  outer.add(std::int16_t{7}, 2.5);
  outer.add(u"", Variant::null());
  outer.add(u"inner", inner.object());
  outer.add(u"flag", Boolean::True);
  for (const std::int32_t level : {1, 3}) {  // deeper levels have no title
    const std::size_t indent = static_cast<std::size_t>(level) * 4;
    EXPECT_EQ(reportDictionary(outer.object(), level),
              (level == 1 ? "@ Title\n" : "") + row("text", "value", indent) +
                  row("7", "2.5", indent) + row("", "", indent) +
                  row("inner", "Dictionary", indent) + row("colour", "red", indent + 4) + "@ " +
                  std::string(indent + 40, ' ') + "green\n" + row("flag", "True", indent));
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
      {with(plain, u"value"), 1, first + "error 438"},
      {with(u"nothing", Object()), 1, first + row("nothing", "Nothing") + "error 91"},
      {with(u"object", plain), 1, first + row("object", "Object") + "error 438"},
      {plain, 1, title + "error 438"},
      {Object(), 1, title + "error 91"},
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
  const Dictionary self = Dictionary::create();
  self.add(u"before", u"1");
  self.add(u"self", self.object());
  EXPECT_EQ(reportDictionary(self.object()),
            "@ Title\n" + row("before", "1") + row("self", "Dictionary") + "error 28");
  self.removeAll();
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
  std::string expected = masked(log.call(u"WriteBox", kLow, u"DIAGNOSTICS INFORMATION")) + "\n";
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
  const std::string drivers = text;
  const std::pair<Variant, std::string> rows[] = {
      {Variant(), drivers}, {Variant::null(), drivers}, {std::int32_t{7}, "7" + drivers}};
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
  constexpr std::u16string_view kSkipping[] = {u"LogConfiguration", u"LogSystemInfo",
                                               u"LogODBCDrivers", u"LogOSInfo"};
  constexpr std::u16string_view kRaising[] = {u"LogWebApplicationDLLInfo", u"LogServerVariables",
                                              u"LogDiagnostics"};
  log.put(u"LogLevel", std::int16_t{1});  // everything is filtered out
  for (const std::u16string_view member : kSkipping) {
    EXPECT_EQ(report(member), "");
    EXPECT_EQ(text, member == u"LogOSInfo" ? std::string(37, '\n') : "");
  }
  for (const std::u16string_view member : kRaising)
    EXPECT_EQ(report(member), member == u"LogDiagnostics" ? "error 91" : "");  // as its box
  EXPECT_EQ(text, "");

  log.put(u"LogLevel", kLow);
  log.call(u"SetLogFile", u"missing\\log.txt");
  for (const std::u16string_view member : kSkipping) {
    EXPECT_EQ(report(member), "");
    EXPECT_EQ(text, "");
    EXPECT_EQ(pendingError(), 76);
  }
  for (const std::u16string_view member : kRaising) EXPECT_EQ(report(member), "error 76");
}

}  // namespace
}  // namespace quendal::test
