// Plain and marked entries, boxes, groups, aligned parameters, dumps, and a page's start and end.
#include "base/characters.h"
#include "base/utf8.h"
#include "core/apartment.h"
#include "platform/clock.h"
#include "platform/locale.h"
#include "tests/logging/logger_fixture.h"

namespace quendal::test {
namespace {

class Entries : public LoggerTest {};

std::string bar(std::size_t count, char fill, std::string_view end) {
  return "@ " + std::string(count, fill).append(end) + "\n";
}

TEST_F(Entries, AreFilteredByLevel) {
  const struct {
    std::int16_t logger, entry;
    std::string_view log;
  } rows[] = {{2, 2, "@ t\n"}, {2, 3, ""}, {1, 2, ""}, {-5, -32768, "@ t\n"}, {7, 7, "@ t\n"}};
  for (const auto& row : rows) {
    log.put(u"LogLevel", row.logger);
    EXPECT_EQ(lines(u"WriteLog", row.entry, u"t"), row.log) << row.entry;
  }
}

TEST_F(Entries, BeginWithAStampOfNow) {
  const auto now = [] { return platform::formatDate(platform::localNow(), u"dd MMM yyyy HH:nn:"); };
  const std::u16string minute = now();
  std::u16string stamp = textOf(log.call(u"WriteLog", kLow)).substr(0, 24);
  EXPECT_TRUE(stamp.starts_with(minute) || now() != minute);
  for (char16_t& unit : stamp) unit = isDigit(unit) ? u'9' : unit;
  EXPECT_TRUE(stamp.ends_with(u":99.999")) << toUtf8(stamp);
}

TEST_F(Entries, RepeatsAndContinuationLinesBeginWithThePrefixOfTheLast) {
  Variant repeat, stamp;
  const auto write = [&] {
    return lines(u"WriteLog", kLow, u"a\r\nb", referenceTo(repeat), referenceTo(stamp));
  };
  for (const int few : {-3, 0, 1}) {
    repeat = static_cast<std::int16_t>(few);
    EXPECT_EQ(write(), "@ a\n@ b\n");
    EXPECT_EQ(repeat.iVal, 1);
    EXPECT_EQ(masked(stamp), "@ ");
  }
  repeat = std::int16_t{3};
  EXPECT_EQ(write(), "@ a\n@ b\n@ @ a\n@ b\n@ @ a\n@ b\n");
}

TEST_F(Entries, TakeAnyValueThatHasAText) {
  const Object own = ScriptObject().defaultMember([](auto) { return Variant(u"own"); }).object();
  const Object null = ScriptObject().defaultMember([](auto) { return Variant::null(); }).object();
  for (const Variant& none : {Variant(), Variant::null(), Variant::missing(), Variant(null)})
    EXPECT_EQ(lines(u"WriteLog", kLow, none), "@ \n");
  EXPECT_EQ(lines(u"WriteLog", kLow, 2.5), "@ 2.5\n");
  EXPECT_EQ(lines(u"WriteLog", kLow, own), "@ own\n");
  EXPECT_EQ(lines(u"WriteLog", kLow, arrayOf({u"x"})), "error 13");
  EXPECT_EQ(lines(u"WriteLog", kLow, Object()), "error 91");
}

TEST_F(Entries, ABoxIsCentredWithHalvesToEven) {
  const struct {
    std::size_t length, before, after;
  } rows[] = {{0, 34, 34}, {1, 34, 33}, {3, 32, 33}, {20, 24, 24}, {67, 0, 1},
              {68, 0, 0},  {69, 0, 1},  {70, 1, 3},  {71, 2, 5},   {65'605, 32'768, 98'305}};
  for (const auto& row : rows) {
    const std::string text(row.length, 'x');
    const std::string border = "@ " + std::string(row.before + row.length + row.after + 2, '*');
    const std::string box = call(u"WriteBox", kLow, std::u16string(row.length, u'x'));
    EXPECT_TRUE(box == "@ \n" + border + "\n@ *" + std::string(row.before, ' ') + text +
                           std::string(row.after, ' ') + "*\n" + border + "\n@ ")
        << row.length;
    EXPECT_TRUE(written() == box + "\n");
  }
  const std::string twoLines = lines(u"WriteBox", kLow, u"a\r\nb");  // no prefix of its own
  EXPECT_NE(twoLines.find("a\nb   "), std::string::npos) << twoLines;
}

TEST_F(Entries, ABoxThatCannotBeWrittenRaisesAndLeavesTheLogAlone) {
  EXPECT_EQ(lines(u"WriteBox", kMedium, arrayOf({u"a"})), "error 91");
  EXPECT_EQ(lines(u"WriteBox", kLow, std::u16string(65'606, u'x')), "error 6");
  EXPECT_EQ(lines(u"WriteBox", kLow, arrayOf({u"a"})), "error 13");
  std::filesystem::remove(folder.native() / "log.txt");
  EXPECT_EQ(call(u"WriteBox", kMedium), "error 91");
  EXPECT_FALSE(platform::fileExists(folder / u"log.txt"));
}

TEST_F(Entries, GroupsWidenAndNarrowByTen) {
  const std::pair<std::u16string_view, std::string> rows[] = {
      {u"StartGroup", bar(18, '=', " ( START")}, {u"StartGroup", bar(28, '=', " ( START")},
      {u"EndGroup", bar(26, '-', " END )")},     {u"EndGroup", bar(16, '-', " END )")},
      {u"EndGroup", bar(6, '-', " END )")},      {u"StartGroup", bar(8, '=', " ( START")}};
  for (const auto& [member, expected] : rows) EXPECT_EQ(lines(member, kLow), expected);
  apartment().groupDepth = -32'760;
  EXPECT_EQ(lines(u"StartGroup", kLow), "error 6");
  EXPECT_EQ(apartment().groupDepth, -32'760);
  apartment().groupDepth = 32'760;
  EXPECT_EQ(lines(u"EndGroup", kLow), bar(32'754, '-', " END )") + "error 6");
  const auto another = Owned<Logging>::make();
  EXPECT_EQ(apartment().groupDepth, 0);
}

TEST_F(Entries, ParametersAreAligned) {
  const std::string blanks = "    ";
  const std::string marked = "*** ERROR ***";
  const struct {
    Variant name, value;
    std::int16_t distance, indent;
    std::string expected;
  } rows[] = {
      {std::u16string(40, u'n'), std::int32_t{7}, 35, 4,
       blanks + std::string(40, 'n') + " " + std::string(6, '.') + " 7"},
      {u"abc", Boolean::True, -2, 1, " abc ...... True"},
      {Variant::null(), Variant::null(), 3, 0, " .. "},
      {u"n", u"a\r\nb\r\nc", 4, 2, "  n .. a\n@        b\n@        c"},
      {u"*** ERROR *** n", u"v", 20, 4, marked + blanks + " n .... v"},
      {u"*** error *** n", u"v", 20, 4, blanks + "*** error *** n .... v"},
      {u"n", u"    *** ERROR ***  *** ERROR ***", 2, 4,
       blanks + "n  " + marked + blanks + "  " + marked},
  };
  for (const auto& row : rows)
    EXPECT_EQ(lines(u"WriteParam", kLow, row.name, row.value, row.distance, row.indent),
              "@ " + row.expected + "\n");
  EXPECT_EQ(lines(u"WriteParam", kLow, u"Name", u"v"),
            "@     Name " + std::string(30, '.') + " v\n");
  EXPECT_EQ(log.call(u"WriteParam", kMedium, u"Name", arrayOf({})).vt, VT_BSTR);

  EXPECT_EQ(lines(u"WriteParam", kMedium, u"n", u"v", kLow, std::int16_t{-1}), "error 5");
  EXPECT_EQ(lines(u"WriteParam", kLow, u"n", arrayOf({u"a"})), "error 13");
  EXPECT_EQ(lines(u"WriteParam", kLow, ScriptObject().object(), u"v"), "error 438");
}

TEST_F(Entries, ADumpPrefixesEveryLineTwice) {
  const std::string framed = bar(18, '=', " ( START") +
                             "@ \n@ @ \t\n@ @ \tone\n@ @ \ttwo\n@ @ \t\n" + bar(16, '-', " END )") +
                             "@ \n";
  EXPECT_EQ(lines(u"Dump", kLow, u"one\r\ntwo"), "@ TEXT DUMP BELOW\n" + framed);
  EXPECT_EQ(lines(u"Dump", kLow, u"one\r\ntwo", u"Title"), "@ Title\n" + framed);
}

class Errors : public Entries {
 protected:
  const std::string banner =
      "@ *** ERROR ***  *** ERROR ***  Tolvex has detected a critical error.\n";
  const std::string marked = "@ *** ERROR *** text\n";
  const std::string details =
      "@ *** Microsoft Error Code    *** = -2147352567\n"
      "@ *** Microsoft Error Source  *** = Page\n"
      "@ *** Microsoft Error Message *** = \n";
  const Object error = ScriptObject()
                           .value(u"Number", std::int32_t{-2147352567})
                           .value(u"Source", u"Page")
                           .value(u"Description", Variant::null())
                           .object();
  const std::int16_t two = 2;
};

TEST_F(Errors, AreRepeatedAndMarked) {
  EXPECT_EQ(lines(u"WriteError", kLow, u"text", two), marked + marked + banner + banner);
  EXPECT_EQ(lines(u"WriteError", kLow), "@ *** ERROR *** \n");
  const std::pair<std::u16string_view, std::vector<Variant>> rows[] = {
      {u"WriteError", {kMedium, u""}},
      {u"LogMSError", {kMedium, error, u""}},
      {u"Catch", {error, u""}},
      {u"LogXMLError", {kMedium, error, u""}}};
  for (auto [member, arguments] : rows) {
    Variant repeat = std::int16_t{-4};  // raised to one even when the entry is filtered out
    arguments.push_back(referenceTo(repeat));
    static_cast<void>(textOrError([&] { return masked(log.callWith(member, arguments)); }));
    EXPECT_EQ(int16Of(repeat), 1) << toUtf8(member);
  }
}

TEST_F(Errors, OfScriptsAreToldWithTheirTextFirstAndLast) {
  EXPECT_EQ(lines(u"LogMSError", kLow, error, u"text", two),
            banner + banner + marked + details + marked);
  EXPECT_EQ(lines(u"LogMSError", kLow, error), "@ *** ERROR *** \n" + details);
  EXPECT_EQ(lines(u"LogMSError", kMedium, error, u"text"), "");
  const Object incomplete = ScriptObject().value(u"Number", std::int16_t{9}).object();
  EXPECT_EQ(lines(u"LogMSError", kLow, incomplete, u"text"),
            marked + "@ *** Microsoft Error Code    *** = 9\nerror 438");
}

TEST_F(Errors, OfParsersAreToldUnlessThereIsNone) {
  const auto document = [](const Variant& code, const std::u16string& place = u"linepos") {
    const Object error = ScriptObject()
                             .value(u"errorCode", code)
                             .value(u"url", u"")
                             .value(u"line", std::int32_t{2})
                             .value(place, std::int32_t{14})
                             .value(u"reason", u"End tag\r\n")
                             .value(u"srcText", Variant::null())
                             .object();
    return ScriptObject().value(u"parseError", error).object();
  };
  const std::string begin =
      "@ *** XML Parser Error URL      *** = \n@ *** XML Parser Error Line     *** = 2\n";
  const std::string told = begin +
                           "@ *** XML Parser Error Position *** = 14\n"
                           "@ *** XML Parser Error Code     *** = -1072896659\n"
                           "@ *** XML Parser Error Reason   *** = End tag\n@ \n"
                           "@ *** XML Parser Error Source   *** = \n";
  const Variant code = std::int32_t{-1072896659};
  EXPECT_EQ(lines(u"LogXMLError", kLow, document(code), u"text"), marked + told);
  EXPECT_EQ(lines(u"LogXMLError", kLow, document(code), u"", two), banner + banner + told);
  for (const Variant& none : {Variant(std::int32_t{0}), Variant::null()})
    EXPECT_EQ(lines(u"LogXMLError", kLow, document(none), u"text"), "");
  EXPECT_EQ(lines(u"LogXMLError", kMedium, document(code), u"text"), "");
  // What cannot be read ends the entry after whole lines, and is asked for at any level.
  EXPECT_EQ(lines(u"LogXMLError", kMedium, error), "error 438");
  EXPECT_EQ(lines(u"LogXMLError", kLow, document(code, u"place")), begin + "error 438");
  EXPECT_EQ(lines(u"LogXMLError", kLow, document(code), arrayOf({u"a"}), two),
            banner + banner + "error 13");
}

TEST_F(Errors, OfTheLibraryAreCaughtOnce) {
  EXPECT_EQ(lines(u"Catch", error, u"text"), "");
  EXPECT_EQ(lines(u"WriteBox", kMedium, u"fails"), "error 91");
  EXPECT_EQ(lines(u"Catch", error, u"text", two), banner + banner + marked + details);
  EXPECT_EQ(lines(u"Catch", error), "");
  apartment().errorNumber = 5;
  EXPECT_EQ(lines(u"Catch", error), details);
  const Object careless = ScriptObject()
                              .defaultMember([](auto) {
                                apartment().errorNumber = 9;
                                return Variant(u"t");
                              })
                              .object();
  EXPECT_EQ(lines(u"WriteLog", kLow, careless), "@ t\n");
  EXPECT_EQ(pendingError(), 0);
  for (const std::u16string_view member :
       {u"StartGroup", u"EndGroup", u"Dump", u"WriteLog", u"WriteError"}) {
    apartment().errorNumber = 5;
    EXPECT_EQ(lines(member, kMedium), "");
    EXPECT_EQ(pendingError(), 0) << toUtf8(member);
  }
  EXPECT_EQ(apartment().groupDepth, 0);
}

class Banners : public Entries {
 protected:
  static std::string repeated(const std::string& text) {
    return text + " " + text + " " + text + " " + text + " " + text;
  }
  const std::string start = repeated("*** START OF RUN ***");
  const std::string end = repeated("*** END OF RUN ***");
};

TEST_F(Banners, OutsideAPageStandAlone) {
  EXPECT_EQ(call(u"WriteASPStart"), "@ " + start);
  EXPECT_EQ(written(), "@ " + start + "\n@ \n");
  EXPECT_EQ(call(u"WriteASPEnd"), "@ " + end);
  EXPECT_EQ(written(), "@ \n@ " + end + "\n@ \n");
  log.put(u"LogLevel", std::int16_t{1});
  for (const std::u16string_view member : {u"WriteASPStart", u"WriteASPEnd"}) {
    std::filesystem::remove(folder.native() / "log.txt");
    EXPECT_EQ(call(member), "");
    EXPECT_TRUE(platform::fileExists(folder / u"log.txt"));
  }
}

TEST_F(Banners, TellTheRequestWithItsQueryForGetAlone) {
  const struct {
    std::string method;
    Variant query;
    bool isTold;
  } rows[] = {{"get", u"a=1", true}, {"POST", u"a=1", false}, {"GET", Variant(), false}};
  ASSERT_EQ(platform::createFile(folder / u"Default.asp", {}), platform::FileError::None);
  PageContext page;
  startPage(page);
  const std::string prefix = "@10.1.2.3 DEFAULT.ASP ";
  for (const auto& [method, query, isTold] : rows) {
    page.serverVariables = {{u"REMOTE_ADDR", u"10.1.2.3"},
                            {u"PATH_TRANSLATED", folder / u"Default.asp"},
                            {u"REQUEST_METHOD", fromUtf8(method)},
                            {u"HTTP_USER_AGENT", u"Agent/1.0"},
                            {u"URL", u"/Default.asp"},
                            {u"QUERY_STRING", query}};
    EXPECT_EQ(call(u"WriteASPStart"), prefix + start);
    std::string expected = prefix + start + "\n";
    const auto expectRow = [&](const std::string& name, const std::string& value) {
      expected += prefix + "    " + name + " " + std::string(34 - name.size(), '.') + value;
    };
    expectRow("HTTP_USER_AGENT", " Agent/1.0\n");
    expectRow(method, " /Default.asp\n");
    if (isTold) expectRow("QUERY_STRING", " a=1\n");
    EXPECT_EQ(written(), expected + prefix + "\n");
  }
  page.serverVariables = {{u"HTTP_USER_AGENT", arrayOf({u"no", u"text"})}};
  EXPECT_EQ(lines(u"WriteASPStart"), "@ " + start + "\nerror 13");
  log.call(u"OnEndPage");
  EXPECT_EQ(call(u"WriteASPEnd"), "error 91");  // a page that has ended
}

}  // namespace
}  // namespace quendal::test
