// The reports: what they write, and what they hand back.
#include <algorithm>

#include "base/text.h"
#include "base/utf8.h"
#include "core/apartment.h"
#include "core/dictionary.h"
#include "system/platform_block.h"
#include "system/queries.h"
#include "tests/logging/logger_fixture.h"
#include "tests/support/pe_builder.h"
#include "tests/support/small_stack.h"

namespace quendal::test {
namespace {

/// A row of a report, as it stands behind the stamp.
std::string row(std::string_view name, std::string_view value, std::size_t indent = 4) {
  return std::string(indent, ' ').append(name) + " " + std::string(34 - name.size(), '.') + " " +
         std::string(value);
}

std::string ascii(std::u16string_view text) { return toUtf8(text); }

/// The log that holds these entries.
std::string entries(const std::vector<std::string>& texts) {
  std::string log;
  for (const std::string& text : texts) log += "@ " + text + "\n";
  return log;
}

class Reports : public LoggerTest {
 protected:
  /// Calls a report, its variable for the text last. Nothing, or "error N"; `log` and `text` are
  /// what was written and handed back, `result` what was returned.
  std::string report(std::u16string_view member, std::vector<Variant> arguments = {}) {
    Variant out = u"<";
    arguments.push_back(referenceTo(out));
    const std::string outcome = textOrError([&] {
      result = LoggerTest::log.callWith(member, arguments);
      return std::string();
    });
    log = written();
    text = maskedLines(out).substr(1);
    return outcome;
  }
  std::string reportDictionary(const Object& dictionary, std::int32_t level = 1) {
    return report(u"LogDictionary", {dictionary, u"Title", level});
  }

  Object& logging = LoggerTest::log;
  std::string log;
  std::string text;
  Variant result;
};

TEST_F(Reports, ConfigurationPlatformAndDriversAreHandedBackRunTogether) {
  std::vector<std::string> platform = {"Platform Information"};
  for (const system::PlatformFact& fact : system::platformFacts())
    platform.push_back(row(ascii(fact.label), ascii(fact.value)));
  std::vector<std::string> drivers = {"ODBC Drivers"};
  for (const std::u16string& name : system::queryODBCDrivers())
    drivers.push_back("\t" + ascii(name));
  const std::pair<std::u16string_view, std::vector<std::string>> cases[] = {
      {u"LogConfiguration",
       {"LogConfiguration", row("Is ASP", "False"), row("Log Level", "2"),
        row("Log Path", ascii(folder / u"")), row("Log File", "log.txt"),
        row("Rollover Bytes", "5242880"), row("Unicode", "True"), row("Remote IP", "")}},
      {u"LogSystemInfo", platform},
      {u"LogODBCDrivers", drivers}};
  for (const auto& [member, expected] : cases) {
    EXPECT_EQ(report(member), "");
    EXPECT_EQ(result.vt, VT_EMPTY);
    EXPECT_EQ(log, entries(expected));
    EXPECT_EQ(text, runTogether(log));
  }
}

TEST_F(Reports, TheSpecialFoldersAreToldByTheirLabels) {
  EXPECT_EQ(report(u"LogOSInfo"), "");
  EXPECT_EQ(int32Of(result), 0);
  EXPECT_EQ(text, log);
  EXPECT_EQ(std::ranges::count(log, '\n'), 37);
  for (const auto& [label, id] :
       {std::pair("My Documents", 5), std::pair("Programs", 2), std::pair("Send To...", 9),
        std::pair("System Directory", 37), std::pair("Common Admin Tools", 47)}) {
    const std::string line = entries({row(label, ascii(system::querySpecialFolder(id)))});
    EXPECT_NE(log.find(line), std::string::npos) << line;
  }
  logging.call(u"Class_Terminate");  // then there is no object to ask: every row is skipped
  EXPECT_EQ(report(u"LogOSInfo"), "");
  EXPECT_EQ(log, entries({"LogOSInfo: List Special Folders"}));
}

const std::string kVariablesTitle =
    "LogServerVariables: Enumerate through ASP Request.ServerVariables";

TEST_F(Reports, WithoutARequestTheServerVariablesAreAWarning) {
  EXPECT_EQ(report(u"LogServerVariables"), "");
  EXPECT_EQ(result.vt, VT_EMPTY);
  EXPECT_EQ(text, log);
  const std::string warning = "*** WARNING ***   ";
  EXPECT_EQ(log, entries({kVariablesTitle, warning,
                          warning + "ASP Request object is not passed into COM DLL. "
                                    "Request.ServerVariables is not available.",
                          warning, warning + "DEVELOPER NOTES: ", warning,
                          warning + "This is expected behavior if this is being run from an EXE "
                                    "instead of an ASP web page.",
                          warning + "If this is run from an ASP web page, Server.CreateObject() "
                                    "should be used instead of just CreateObject().",
                          warning}));
}

TEST_F(Reports, ServerVariablesAreToldInTheirOrder) {
  PageContext page;
  page.serverVariables = {{u"ALL_HTTP", u"hidden"},
                          {u"URL", u"/a.asp"},
                          {u"all_raw", u"hidden"},
                          {u"CONTENT_LENGTH", std::int32_t{0}},
                          {u"AUTH_USER", Variant::null()}};
  startPage(page);
  std::vector<std::string> expected = {kVariablesTitle, row("URL", "/a.asp"),
                                       row("CONTENT_LENGTH", "0"), row("AUTH_USER", "")};
  EXPECT_EQ(report(u"LogServerVariables"), "");
  EXPECT_EQ(log, entries(expected));
  EXPECT_EQ(text, log);

  // One that the collection raises reaches the page, after what was written was handed back.
  page.atEnd = [] { throw AutomationError(70); };
  EXPECT_EQ(report(u"LogServerVariables"), "error 70");
  EXPECT_EQ(log, entries(expected));
  EXPECT_EQ(text, log);

  // An error of the library that is still pending after the last variable is caught.
  page.atEnd = [] { apartment().errorNumber = 9; };
  EXPECT_EQ(report(u"LogServerVariables"), "");
  expected.insert(expected.end(), 20,
                  "*** ERROR ***  *** ERROR ***  Tolvex has detected a critical error.");
  for (const char* line : {"*** ERROR *** LogServerVariables: Generic error occurred.",
                           "*** Microsoft Error Code    *** = 9",
                           "*** Microsoft Error Source  *** = QUENDAL_REPORTS_ASP",
                           "*** Microsoft Error Message *** = Subscript out of range"})
    expected.push_back(line);
  EXPECT_EQ(log, entries(expected));
}

class FileVersions : public Reports {
 protected:
  void addFile(std::u16string_view name, std::u16string_view version) {
    VersionParts parts;
    parts.translations = {0x04B00409};
    parts.tables = {{u"040904B0", {{u"ProductVersion", std::u16string(version)}}}};
    const Bytes image = peImage(PeKind::Pe32, {{0x0409, versionBlock(parts)}});
    EXPECT_EQ(platform::createFile(files / name, image), platform::FileError::None);
  }
  std::string head(std::u16string_view directory) {
    return entries({"LogFileVersionInfo", row("IN_szDirectory", ascii(directory))});
  }

  platform::TempFolder files;
};

TEST_F(FileVersions, OnlyFilesThatTellTheirVersionAreListed) {
  addFile(u"b.dll", u"2.0");
  addFile(u"a.exe", u"1.0");
  EXPECT_EQ(platform::createFolder(files / u"sub"), platform::FileError::None);
  EXPECT_EQ(platform::createFile(files / u"readme.txt", platform::bytesOf("MZ")),
            platform::FileError::None);
  for (const std::u16string& directory : {files.path(), files / u""}) {
    EXPECT_EQ(report(u"LogFileVersionInfo", {directory}), "");
    EXPECT_EQ(int32Of(result), 0);
    const std::string a = entries({row("a.exe", "1.0")});
    const std::string b = entries({row("b.dll", "2.0")});
    EXPECT_TRUE(log == head(directory) + a + b || log == head(directory) + b + a) << log;
    EXPECT_EQ(text, log);
  }
}

TEST_F(FileVersions, AFolderMayBeMissingOrHoldThousandsOfFiles) {
  EXPECT_EQ(report(u"LogFileVersionInfo", {files / u"none"}), "");
  EXPECT_EQ(int32Of(result), -1);
  EXPECT_EQ(log, head(files / u"none"));

  addFile(u"one.dll", u"1.2.3");
  for (int i = 0; i < 2000; ++i)
    static_cast<void>(platform::createFile(files / (u"f" + decimalText(i)), {}));
  EXPECT_EQ(report(u"LogFileVersionInfo", {files.path()}), "");
  EXPECT_EQ(int32Of(result), 0);
  EXPECT_EQ(log, head(files.path()) + entries({row("one.dll", "1.2.3")}));
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
  const auto rows = [](std::size_t indent) {
    return entries({row("text", "value", indent), row("7", "2.5", indent), row("", "", indent),
                    row("inner", "Dictionary", indent), row("colour", "red", indent + 4),
                    std::string(indent + 40, ' ') + "green", row("flag", "True", indent)});
  };
  EXPECT_EQ(reportDictionary(outer.object()), "");
  EXPECT_EQ(int32Of(result), 2);
  EXPECT_EQ(log, entries({"Title"}) + rows(4));
  EXPECT_EQ(text, log);

  EXPECT_EQ(reportDictionary(outer.object(), 3), "");  // deeper levels have no title
  EXPECT_EQ(int32Of(result), 4);
  EXPECT_EQ(log, rows(12));
  EXPECT_EQ(call(u"LogDictionary", Dictionary::create().object()), "0");
  EXPECT_EQ(written(), entries({"LogDictionary: Dictionary"}));
}

TEST_F(Reports, AnyObjectWithKeysAndItemsIsADictionary) {
  const auto item = [](ScriptObject::Arguments arguments) {
    return Variant(u"item of " + textOf(arguments[0]));
  };
  const std::vector<Variant> keys = {u"a", std::int32_t{2}};
  for (const Variant& list : {arrayOf(keys), Variant(ScriptObject().elements(keys).object())}) {
    const Object mine = ScriptObject().value(u"Keys", list).member(u"Item", item).object();
    EXPECT_EQ(reportDictionary(mine), "");
    EXPECT_EQ(log, entries({"Title", row("a", "item of a"), row("2", "item of 2")}));
  }
}

TEST_F(Reports, WhatCannotBeToldEndsTheReportAfterWholeLines) {
  const auto with = [](const Variant& key, const Variant& item) {
    const Dictionary dictionary = Dictionary::create();
    dictionary.add(u"first", u"1");
    dictionary.add(key, item);
    return dictionary.object();
  };
  const std::string title = entries({"Title"});
  const std::string first = title + entries({row("first", "1")});
  const Object plain = ScriptObject().object();
  const struct {
    Object dictionary;
    std::int32_t level;
    std::string error, log;
  } cases[] = {
      {with(u"array", arrayOf({u"a"})), 1, "error 13", first},
      {with(plain, u"value"), 1, "error 438", first},
      {with(u"nothing", Object()), 1, "error 91", first + entries({row("nothing", "Nothing")})},
      {with(u"object", plain), 1, "error 438", first + entries({row("object", "Object")})},
      {plain, 1, "error 438", title},
      {Object(), 1, "error 91", title},
      {ScriptObject().value(u"Keys", std::int32_t{5}).object(), 1, "error 451", title},
      {with(u"a", u"b"), -1, "error 5", ""},
      {with(u"a", u"b"), 10'000, "error 6", ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(reportDictionary(c.dictionary, c.level), c.error);
    EXPECT_EQ(log, c.log);
    EXPECT_EQ(text, c.log);
  }
}

TEST_F(Reports, NestingWithoutEndIsAnError) {
  const Dictionary self = Dictionary::create();
  self.add(u"before", u"1");
  self.add(u"self", self.object());
  EXPECT_EQ(reportDictionary(self.object()), "error 28");
  EXPECT_EQ(log, entries({"Title", row("before", "1"), row("self", "Dictionary")}));
  self.removeAll();

  int made = 0;
  std::function<Object()> endless = [&] {
    ++made;
    return ScriptObject()
        .value(u"Keys", arrayOf({u"next"}))
        .member(u"Item", [&](auto) { return Variant(endless()); })
        .object();
  };
  onSmallStack([&] { EXPECT_EQ(reportDictionary(endless()), "error 28"); });

  const int deepest = 100;
  Object nested = Dictionary::create().object();
  for (made = 0; made < deepest; ++made) {
    const Dictionary outer = Dictionary::create();
    outer.add(u"inner", nested);
    nested = outer.object();
  }
  EXPECT_EQ(reportDictionary(nested), "");
  EXPECT_EQ(std::ranges::count(log, '\n'), 1 + deepest);
}

TEST_F(Reports, TheDiagnosticsAreABoxAndSixReports) {
  PageContext page;
  page.serverVariables = {{u"URL", u"/a.asp"}};
  startPage(page);
  EXPECT_EQ(report(u"LogDiagnostics"), "");
  EXPECT_EQ(int32Of(result), 0);
  const std::size_t boxEnd = log.find("@ LogConfiguration");
  ASSERT_NE(boxEnd, std::string::npos);
  const std::string box = log.substr(0, boxEnd);
  EXPECT_NE(box.find("DIAGNOSTICS INFORMATION"), std::string::npos);
  const std::string allWritten = log;
  const std::string allText = text;
  std::string parts = box;
  std::string texts = box;
  for (const std::u16string_view member :
       {u"LogConfiguration", u"LogSystemInfo", u"LogODBCDrivers", u"LogWebApplicationDLLInfo",
        u"LogServerVariables", u"LogOSInfo"}) {
    EXPECT_EQ(report(member), "");
    parts += log;
    texts += text;
  }
  EXPECT_EQ(allWritten, parts);
  EXPECT_EQ(allText, texts);
}

TEST_F(Reports, TheTextIsAppendedToAVariableOfAnyKind) {
  const std::string drivers = runTogether(report(u"LogODBCDrivers") + text);
  const std::pair<Variant, std::string> cases[] = {
      {Variant(), drivers}, {Variant::null(), drivers}, {std::int32_t{7}, "7" + drivers}};
  for (const auto& [before, after] : cases) {
    Variant variable = before;
    logging.call(u"LogODBCDrivers", referenceTo(variable));
    EXPECT_EQ(masked(variable), after);
  }
  BSTR typed = Text(u"typed:").release();
  VARIANT reference;
  reference.vt = VT_BYREF | VT_BSTR;
  reference.pbstrVal = &typed;
  logging.call(u"LogODBCDrivers", Variant::attach(reference));
  EXPECT_EQ(masked(std::u16string(Text::attach(typed))), "typed:" + drivers);

  // A variable that no text can be appended to: a step that is skipped, or an error.
  EXPECT_EQ(call(u"LogODBCDrivers", arrayOf({u"a"})), "");
  static_cast<void>(written());
  EXPECT_EQ(call(u"LogFileVersionInfo", u"", arrayOf({u"a"})), "error 13");
  EXPECT_EQ(written(), entries({"LogFileVersionInfo"}));  // and nothing after it
  Variant untouched;
  logging.call(u"SetLogFile", u"no\\such\\folder.txt");
  EXPECT_EQ(call(u"LogServerVariables", referenceTo(untouched)), "error 76");
  EXPECT_EQ(untouched.vt, VT_EMPTY);
}

TEST_F(Reports, FourReportsSkipWhatFailsAndTheOthersRaise) {
  constexpr std::u16string_view kSkipping[] = {u"LogConfiguration", u"LogSystemInfo",
                                               u"LogODBCDrivers", u"LogOSInfo"};
  constexpr std::u16string_view kRaising[] = {u"LogWebApplicationDLLInfo", u"LogServerVariables",
                                              u"LogDiagnostics"};
  logging.put(u"LogLevel", std::int16_t{1});  // everything is filtered out
  for (const std::u16string_view member : kSkipping) {
    EXPECT_EQ(report(member), "");
    EXPECT_EQ(text, member == u"LogOSInfo" ? std::string(37, '\n') : "");
  }
  for (const std::u16string_view member : kRaising)
    EXPECT_EQ(report(member), member == u"LogDiagnostics" ? "error 91" : "");  // as its box
  EXPECT_EQ(log, "");

  logging.put(u"LogLevel", kLow);
  logging.call(u"SetLogFile", u"missing\\log.txt");
  for (const std::u16string_view member : kSkipping) {
    EXPECT_EQ(report(member), "");
    EXPECT_EQ(text, "");
    EXPECT_EQ(pendingError(), 76);
  }
  for (const std::u16string_view member : kRaising) EXPECT_EQ(report(member), "error 76");
}

}  // namespace
}  // namespace quendal::test
