// The calls that tests/pages/logging_all.vbs makes in the script host, made here by name: the log
// is the same, line for line, but for the machine's own values.
#include <sstream>

#include "core/dictionary.h"
#include "core/text_tools.h"
#include "platform/code_page.h"
#include "tests/logging/logger_fixture.h"

namespace quendal::test {
namespace {

class PageRun : public LoggerTest {};

/// The log as the page printed it in the script host: the lines after a heading.
std::string expectedLog() {
  const std::string file =
      platform::contentOf(u"" QUENDAL_SOURCE_DIR "/tests/pages/logging_all.vbs.expected");
  const std::string heading = "== THE LOG\n";
  const std::size_t start = file.find(heading) + heading.size();
  return file.substr(start, file.find("\n== ", start) + 1 - start);
}

/// The log as the page prints it: a line for each stamp, "|" for line ends.
std::string printed(std::string log, const std::string& folder) {
  for (std::size_t at = 0; (at = log.find(folder, at)) != log.npos;)
    log.replace(at, folder.size(), "<here>");
  std::string lines;
  for (const char c : log) {
    if (c == '@' && !lines.empty() && lines.back() != '\n') lines += '\n';
    if (c == '\n') lines += '|';
    lines += c;
  }
  return lines;
}

/// Whether a line is one of those that the page replaced by "<files>", "<folders>" or "<drivers>".
bool isMachineRow(const std::string& line) {
  return line.find("@10.1.2.3 PAGE.ASP ") == 0 &&
         (line.find(" .") != line.npos || line.find('\t') != line.npos);
}

void expectSameLines(const std::string& log, const std::string& expected) {
  std::istringstream actualLines(log);
  std::istringstream expectedLines(expected);
  std::string actual;
  std::string line;
  bool hasLine = static_cast<bool>(std::getline(actualLines, actual));
  while (std::getline(expectedLines, line)) {
    if (line.front() == '<') {
      while (hasLine && isMachineRow(actual))
        hasLine = static_cast<bool>(std::getline(actualLines, actual));
      continue;
    }
    if (const std::size_t mask = std::min(line.find("<value>"), line.find("<folder>"));
        mask != line.npos)
      ASSERT_EQ(actual.substr(0, mask), line.substr(0, mask));
    else
      ASSERT_EQ(actual, line);
    hasLine = static_cast<bool>(std::getline(actualLines, actual));
  }
  EXPECT_FALSE(hasLine) << actual;
}

TEST_F(PageRun, TheLogIsThatOfTheScriptHost) {
  PageContext page;
  page.serverVariables = {{u"ALL_HTTP", u"HTTP_USER_AGENT:Browser/1.0"},
                          {u"REMOTE_ADDR", u"10.1.2.3"},
                          {u"PATH_TRANSLATED", folder / u"Page.asp"},
                          {u"REQUEST_METHOD", u"GET"},
                          {u"HTTP_USER_AGENT", u"Browser/1.0"},
                          {u"URL", u"/Page.asp"},
                          {u"QUERY_STRING", u"a=1&b=2"}};
  ASSERT_EQ(platform::createFile(folder / u"Page.asp", {}), platform::FileError::None);
  startPage(page);

  const std::int16_t one = 1, two = 2, three = 3;
  const Object error = ScriptObject()
                           .value(u"Number", std::int32_t{91})
                           .value(u"Source", u"QUENDAL_REPORTS_ASP")
                           .value(u"Description", u"Object variable or With block variable not set")
                           .object();
  const Object parserError = ScriptObject()
                                 .value(u"errorCode", std::int32_t{-1072896659})
                                 .value(u"url", Variant::null())
                                 .value(u"line", two)
                                 .value(u"linepos", std::int16_t{14})
                                 .value(u"reason", u"An end tag is missing.")
                                 .value(u"srcText", u"<b>")
                                 .object();
  const Object document = ScriptObject().value(u"parseError", parserError).object();
  const Dictionary inner = Dictionary::create();
  inner.add(std::int16_t{7}, Boolean::True);
  const Dictionary outer = Dictionary::create();
  outer.add(u"text", u"value");
  outer.add(u"inner", inner.object());
  outer.add(u"null", Variant::null());

  log.call(u"WriteASPStart");
  log.call(u"WriteLog", kLow, u"Hello", three);
  log.call(u"WriteLog", kLow, u"one\r\ntwo");
  log.put(u"LogLevel", three);
  log.call(u"WriteLog", three, u"seen");
  log.put(u"LogLevel", two);
  log.call(u"WriteBox", kLow, u"A text in a box");
  EXPECT_EQ(call(u"WriteBox", kMedium, u"unseen"), "error 91");
  log.call(u"Catch", error, u"caught", two);
  log.call(u"LogMSError", kLow, error, u"logged");
  log.call(u"StartGroup", kLow);
  log.call(u"WriteParam", kLow, u"Name", 12.5);
  log.call(u"WriteParam", kLow, u"*** ERROR *** Name", u"a\r\nb", std::int16_t{20}, two);
  log.call(u"EndGroup", kLow);
  log.call(u"Dump", kLow, u"first\r\nsecond");
  log.call(u"WriteError", kLow, u"wrong", two);
  log.call(u"LogXMLError", kLow, document, u"parsed");
  for (const std::u16string_view report :
       {u"LogConfiguration", u"LogSystemInfo", u"LogODBCDrivers", u"LogServerVariables"})
    log.call(report);
  log.call(u"LogFileVersionInfo", folder / u"none");
  log.call(u"LogWebApplicationDLLInfo");
  log.call(u"LogOSInfo");
  log.call(u"LogDictionary", outer.object());
  outer.add(u"itself", outer.object());
  EXPECT_EQ(call(u"LogDictionary", outer.object(), u"Endless", one), "error 28");
  outer.removeAll();
  log.call(u"LogDiagnostics");
  log.call(u"WriteASPEnd");

  std::string expected = expectedLog();
  expected.erase(0, expected.find('@'));  // the banner: this log was there already
  expectSameLines(printed(written(), platform::toUtf8(folder.path())), expected);
}

}  // namespace
}  // namespace quendal::test
