// The start and the end of a page's run.
#include "tests/logging/logger_fixture.h"

namespace quendal::test {
namespace {

const std::string kStart =
    "*** START OF RUN *** *** START OF RUN *** *** START OF RUN *** *** START OF RUN *** "
    "*** START OF RUN ***";
const std::string kEnd =
    "*** END OF RUN *** *** END OF RUN *** *** END OF RUN *** *** END OF RUN *** "
    "*** END OF RUN ***";

class Banners : public LoggerTest {};

std::string row(std::string name, std::string_view value) {
  const std::size_t dots = 35 - name.size() - 1;
  return "    " + name + " " + std::string(dots, '.').append(" ").append(value) + "\n";
}

TEST_F(Banners, OutsideAPageThereIsOnlyTheBanner) {
  EXPECT_EQ(call(u"WriteASPStart"), "@ " + kStart);
  EXPECT_EQ(written(), "@ " + kStart + "\n@ \n");
  EXPECT_EQ(call(u"WriteASPEnd"), "@ " + kEnd);
  EXPECT_EQ(written(), "@ \n@ " + kEnd + "\n@ \n");
}

TEST_F(Banners, ARequestIsToldWithItsQueryForGetAlone) {
  const struct {
    std::u16string method;
    Variant query;
    bool isTold;
  } cases[] = {{u"GET", u"a=1", true},     {u"get", u"a=1", true}, {u"POST", u"a=1", false},
               {u"GET", Variant(), false}, {u"GET", u"", false},   {u"GETS", u"a=1", false}};
  ASSERT_EQ(platform::createFile(folder / u"Default.asp", {}), platform::FileError::None);
  PageContext page;
  startPage(page);
  for (const auto& c : cases) {
    const std::string method(c.method.begin(), c.method.end());
    page.serverVariables = {
        {u"REMOTE_ADDR", u"10.1.2.3"}, {u"PATH_TRANSLATED", folder / u"Default.asp"},
        {u"REQUEST_METHOD", c.method}, {u"HTTP_USER_AGENT", u"Agent/1.0"},
        {u"URL", u"/Default.asp"},     {u"QUERY_STRING", c.query}};
    page.reads.clear();
    const std::string prefix = "@10.1.2.3 DEFAULT.ASP ";
    EXPECT_EQ(call(u"WriteASPStart"), prefix + kStart);
    EXPECT_EQ(written(), prefix + kStart + "\n" + prefix + row("HTTP_USER_AGENT", "Agent/1.0") +
                             prefix + row(method, "/Default.asp") +
                             (c.isTold ? prefix + row("QUERY_STRING", "a=1") : "") + prefix + "\n");
    EXPECT_EQ(page.reads[2], 1);
    EXPECT_EQ(page.reads[5], c.isTold ? 2 : method == "GET" ? 1 : 0);
  }
}

TEST_F(Banners, AtLevelOffNothingIsWrittenButTheLogIsThere) {
  std::error_code ignored;
  std::filesystem::remove(folder.native() / "log.txt", ignored);
  log.put(u"LogLevel", std::int16_t{1});
  EXPECT_EQ(call(u"WriteASPEnd"), "");
  EXPECT_TRUE(platform::fileExists(folder / u"log.txt"));
  EXPECT_EQ(call(u"WriteASPStart"), "");
}

TEST_F(Banners, AServerVariableThatCannotBeReadRaisesAfterWholeLines) {
  PageContext page;
  startPage(page);
  page.serverVariables = {{u"HTTP_USER_AGENT", arrayOf({u"no", u"text"})}};
  EXPECT_EQ(call(u"WriteASPStart"), "error 13");
  EXPECT_EQ(written(), "@ " + kStart + "\n");
  log.call(u"OnEndPage");
  EXPECT_EQ(call(u"WriteASPEnd"), "error 91");  // a page that has ended
}

}  // namespace
}  // namespace quendal::test
