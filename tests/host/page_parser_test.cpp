// What the page host makes of the text of a page, and of the paths that requests name.
#include "tools/asp_host/page_parser.h"

#include <gtest/gtest.h>

#include <map>
#include <stdexcept>

#include "base/utf8.h"
#include "platform/code_page.h"
#include "tools/asp_host/site_path.h"

namespace quendal::host {
namespace {

using Files = std::map<std::u16string, std::string>;

ParsedPage parse(const Files& files) {
  return parsePage(u"page", {[](std::u16string_view name, bool isVirtual, const std::u16string&) {
                               return (isVirtual ? u"/" : u"") + std::u16string(name);
                             },
                             [&](const std::u16string& file) {
                               const auto found = files.find(file);
                               if (found == files.end()) throw std::runtime_error("not there");
                               return found->second;
                             },
                             [](std::string_view bytes, unsigned codePage) {
                               return codePage == 65001 ? fromUtf8(bytes)
                                                        : platform::fromCodePage(bytes);
                             }});
}

/// The script with the place of each line before it, the blocks in quotes instead of their number.
std::string script(const ParsedPage& page, std::size_t number = 0) {
  const PageScript& script = page.scripts.at(number);
  std::string result = script.language == Language::VBScript ? "VBScript" : "JScript";
  std::u16string_view text = script.text;
  for (const SourceLine& line : script.lines) {
    const std::u16string code(text.substr(0, text.find(u'\n')));
    text.remove_prefix(code.size() + 1);
    result += "\n" + toUtf8(line.file) + std::to_string(line.line) + "|";
    constexpr std::u16string_view kBlock = u"Response.WriteBlock(";
    if (code.starts_with(kBlock))
      result += "'" + toUtf8(page.blocks.at(std::stoul(toUtf8(code.substr(kBlock.size()))))) + "'";
    else
      result += toUtf8(code);
  }
  EXPECT_TRUE(text.empty());
  return result;
}

std::string failure(const Files& files) {
  try {
    static_cast<void>(parse(files));
    return "none";
  } catch (const PageError& error) {
    return error.what();
  }
}

TEST(PageParser, EachLineOfTheScriptKnowsItsPlace) {
  const struct {
    const char* page;
    const char* script;
  } kCases[] = {
      {"", "VBScript"},
      {"a < b <! <\n", "VBScript\npage1|'a < b <! <\n'"},
      {"<b><%= x %></b>\n<% y\r\n z %>.",
       "VBScript\npage1|'<b>'\npage1|Response.Write(x)\npage1|'</b>\n'\npage2| y\npage3| z \npage3|"
       "'.'"},
      {"\n<%=\n\n x\n%>", "VBScript\npage1|'\n'\npage4|Response.Write(x)"},
      {"<%=%>", "VBScript\npage1|Response.Write()"},
      {"<%@ codepage=\"65001\" language = 'javascript' %> \r\n\xC3\xA9",
       "JScript\npage2|'\xC3\xA9'"},
      {"\xE9", "VBScript\npage1|'\xC3\xA9'"},
      {"\xEF\xBB\xBF\xC3\xA9", "VBScript\npage1|'\xC3\xA9'"},
      {"x<!-- #INCLUDE file=\"inc\" -->y<!--#include virtual='v'--><!-- no -->",
       "VBScript\npage1|'x'\ninc1|'one\n'\ninc2| two \npage1|'y'\n/v1|'V'\npage1|'<!-- no -->'"},
      {"<script src=x></script><SCRIPT RunAt=Server>\nf\n</Script>\n<% g %>",
       "VBScript\npage1|'<script src=x></script>'\npage3|'\n'\npage4| g \npage1|\npage2|f\npage3|"},
  };
  for (const auto& test : kCases) {
    SCOPED_TRACE(test.page);
    EXPECT_EQ(script(parse({{u"page", test.page}, {u"inc", "one\n<% two %>"}, {u"/v", "V"}})),
              test.script);
  }
}

TEST(PageParser, ScriptsOfTheOtherLanguageRunFirst) {
  const ParsedPage page = parse({{u"page",
                                  "<%@ language=JScript codepage=1252%><% a %>"
                                  "<script language=VBScript runat=server>b</script>"
                                  "<script language=jscript runat='server'>c</script>"}});
  ASSERT_EQ(page.scripts.size(), 2u);
  EXPECT_EQ(script(page, 0), "VBScript\npage1|b");
  EXPECT_EQ(script(page, 1), "JScript\npage1| a \npage1|c");
  EXPECT_EQ(page.codePage, 1252u);
}

TEST(PageParser, FaultsAreToldWithTheirPlace) {
  const struct {
    Files files;
    const char* error;
  } kCases[] = {
      {{}, "page, line 1: not there"},
      {{{u"page", "\n\n<!--#include file=\"a\"-->"}}, "page, line 3: not there"},
      {{{u"page", "\n<!--#include file=a-->"}, {u"a", "\n\n<!--#include file=PAGE-->"}},
       "a, line 3: the file includes itself: PAGE"},
      {{{u"page", "<!--#include page-->"}},
       "page, line 1: an include names a file or a virtual path"},
      {{{u"page", "\n<% x"}}, "page, line 2: there is no %> for this"},
      {{{u"page", "<!--#include file=a"}}, "page, line 1: there is no --> for this"},
      {{{u"page", "\n<script runat=server>x</scrip>"}},
       "page, line 2: there is no </script> for this"},
      {{{u"page", "<script runat=server"}}, "page, line 1: there is no </script> for this"},
      {{{u"page", "<%@ language=perl %>"}},
       "page, line 1: no script language of this name is known"},
      {{{u"page", "<%@ codepage=utf8 %>"}}, "page, line 1: a code page is a number"},
      {{{u"page", "<%@ %>\n<%@ %>"}}, "page, line 2: a page has one directive, in its own file"},
  };
  for (const auto& test : kCases) EXPECT_EQ(failure(test.files), test.error);
  // Each file includes the next one twice.
  Files files;
  for (int i = 0; i < 30; ++i) {
    const std::string next = "<!--#include file=f" + std::to_string(i + 1) + "-->";
    files[i == 0 ? u"page" : fromUtf8("f" + std::to_string(i))] = next + next;
  }
  files[u"f30"] = "x";
  EXPECT_NE(failure(files).find("there are too many includes"), std::string::npos);
}

TEST(SitePath, OnlyPlainPathsBelowTheRootAreResolved) {
  const struct {
    std::u16string_view path;
    const char* resolved;
  } kCases[] = {
      {u"/", ""},
      {u"/a/b.asp", "/a/b.asp"},
      {u"a\\.\\b", "/a/b"},
      {u"//a///b/", "/a/b"},
      {u"/a/../b", "/b"},
      {u"/..", "none"},
      {u"/a/../../b", "none"},
      {u"C:\\x", "none"},
      {u"/a.asp::$DATA", "none"},
      {u"/a.asp.", "none"},
      {u"/a.asp ", "none"},
      {u"/a\nb", "none"},
      {u"/con", "none"},
      {u"/x/Com1.asp", "none"},
      {u"/nul .txt", "none"},
      {u"/context", "/context"},
      {u"/a*", "none"},
      {u"/...", "none"},
  };
  for (const auto& test : kCases) {
    const auto resolved = resolvedPath(test.path);
    EXPECT_EQ(resolved ? toUtf8(*resolved) : "none", test.resolved) << toUtf8(test.path);
  }
}

TEST(SitePath, LogsInAnyCaseAtAnyDepth) {
  for (const char16_t* logs : {u"/LOGS", u"/Logs/log.txt", u"/a/lOgS/b"})
    EXPECT_TRUE(leadsThroughLogs(logs)) << toUtf8(logs);
  for (const char16_t* other : {u"", u"/LOG", u"/LOGS.TXT", u"/MYLOGS/a", u"/LOGS2"})
    EXPECT_FALSE(leadsThroughLogs(other)) << toUtf8(other);
}

TEST(SitePath, PercentSequences) {
  EXPECT_EQ(percentDecoded("a%20b+%C3%a9%", true), "a b \xC3\xA9%");
  EXPECT_EQ(percentDecoded("a%41+", false), "aA+");
  for (const char* bad : {"%", "%4", "%zz"}) EXPECT_EQ(percentDecoded(bad, false), std::nullopt);
}

}  // namespace
}  // namespace quendal::host
