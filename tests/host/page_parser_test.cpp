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

/// The scripts with the place of each line before it, the blocks in quotes instead of their number;
/// or why there are none.
std::string told(const Files& files) try {
  const auto locate = [](std::u16string_view name, bool isVirtual, const std::u16string&) {
    return (isVirtual ? u"/" : u"") + std::u16string(name);
  };
  const auto read = [&](const std::u16string& file) {
    if (!files.contains(file)) throw std::runtime_error("not there");
    return files.at(file);
  };
  const auto decode = [](std::string_view bytes, unsigned codePage) {
    return codePage == 65001 ? fromUtf8(bytes) : platform::fromCodePage(bytes);
  };
  const ParsedPage page = parsePage(u"page", {locate, read, decode});
  std::string result;
  for (const PageScript& script : page.scripts) {
    result += script.language == Language::VBScript ? "VBScript\n" : "JScript\n";
    std::u16string_view text = script.text;
    for (const SourceLine& line : script.lines) {
      std::string code = toUtf8(text.substr(0, text.find(u'\n')));
      text.remove_prefix(text.find(u'\n') + 1);
      constexpr std::string_view kBlock = "Response.WriteBlock(";
      if (code.starts_with(kBlock))
        code = "'" + toUtf8(page.blocks.at(std::stoul(code.substr(kBlock.size())))) + "'";
      result += toUtf8(line.file) + std::to_string(line.line) + "|" + code + "\n";
    }
    EXPECT_TRUE(text.empty());
  }
  return result;
} catch (const PageError& error) {
  return error.what();
}

TEST(PageParser, EachLineOfTheScriptAndEachFaultIsToldWithItsPlace) {
  const struct {
    std::string page;
    std::string told;
  } kCases[] = {
      {"a < b <! <\n", "VBScript\npage1|'a < b <! <\n'\n"},
      {"<b><%= x %></b>\n<% y\r\n z %>.",
       "VBScript\npage1|'<b>'\npage1|Response.Write(x)\npage1|'</b>\n'\npage2| y\npage3| z \npage3|"
       "'.'\n"},
      {"\n<%=\n\n x\n%>", "VBScript\npage1|'\n'\npage4|Response.Write(x)\n"},
      {"<%@ codepage=\"65001\" language = 'javascript' %> \r\n\xC3\xA9",
       "JScript\npage2|'\xC3\xA9'\n"},
      {"\xEF\xBB\xBF\xC3\xA9", "VBScript\npage1|'\xC3\xA9'\n"},
      {"x<!-- #INCLUDE file=\"inc\" -->y<!--#include virtual='v'--><!-- no -->",
       "VBScript\npage1|'x'\ninc1|'one\n'\ninc2| two \npage1|'y'\n/v1|'V'\npage1|'<!-- no -->'\n"},
      {"<script src=x></script><SCRIPT RunAt=Server>\nf\n</Script>\n<% g %>",
       "VBScript\npage1|'<script src=x></script>'\npage3|'\n'\npage4| g \npage1|\npage2|f\npage3|"
       "\n"},
      // Scripts of the other language run first.
      {"<%@ language=JScript%><% a %><script language=VBScript runat=server>b</script>"
       "<script language=jscript runat='server'>c</script>",
       "VBScript\npage1|b\nJScript\npage1| a \npage1|c\n"},
      {"\n\n<!--#include file=\"a\"-->", "page, line 3: not there"},
      {"\n<!--#include file=cycle-->", "cycle, line 3: the file includes itself: PAGE"},
      {"<!--#include file=f1-->", "f28, line 1: there are too many includes"},
      {"<!--#include page-->", "page, line 1: an include names a file or a virtual path"},
      {"\n<script runat=server>x</scrip>", "page, line 2: there is no </script> for this"},
      {"<%@ language=perl %>", "page, line 1: no script language of this name is known"},
      {"<%@ %>\n<%@ %>", "page, line 2: a page has one directive, in its own file"},
  };
  Files files = {{u"inc", "one\n<% two %>"},
                 {u"/v", "V"},
                 {u"cycle", "\n\n<!--#include file=PAGE-->"},
                 {u"f31", "x"}};
  for (int i = 1; i <= 30; ++i) {  // each includes the next one twice
    const std::string next = "<!--#include file=f" + std::to_string(i + 1) + "-->";
    files[fromUtf8("f" + std::to_string(i))] = next + next;
  }
  for (const auto& test : kCases) {
    files[u"page"] = test.page;
    EXPECT_EQ(told(files), test.told) << test.page;
  }
}

TEST(SitePath, OnlyPlainPathsBelowTheRootAreResolved) {
  const std::pair<std::u16string_view, const char*> kCases[] = {
      {u"/", ""},         {u"/a/b.asp", "/a/b.asp"}, {u"a\\.\\b", "/a/b"}, {u"//a///b/", "/a/b"},
      {u"/a/../b", "/b"}, {u"/context", "/context"}};
  for (const auto& [path, resolved] : kCases)
    EXPECT_EQ(toUtf8(resolvedPath(path).value_or(u"none")), resolved) << toUtf8(path);
  for (const std::u16string_view refused :
       {u"/..", u"/a/../../b", u"C:\\x", u"/a.asp::$DATA", u"/a.asp.", u"/a.asp ", u"/a\nb",
        u"/con", u"/x/Com1.asp", u"/nul .txt", u"/a*", u"/..."})
    EXPECT_EQ(resolvedPath(refused), std::nullopt) << toUtf8(refused);
}

}  // namespace
}  // namespace quendal::host
