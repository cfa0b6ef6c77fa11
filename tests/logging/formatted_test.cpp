// Boxes, groups, aligned parameters and dumps.
#include "core/apartment.h"
#include "tests/logging/logger_fixture.h"

namespace quendal::test {
namespace {

class Formatted : public LoggerTest {};

std::string bar(std::size_t count, char fill, std::string_view end) {
  return "@ " + std::string(count, fill).append(end);
}

TEST_F(Formatted, ABoxIsCentredWithHalvesToEven) {
  const struct {
    std::size_t length, before, after;
  } cases[] = {
      {0, 34, 34}, {1, 34, 33}, {3, 32, 33}, {20, 24, 24}, {67, 0, 1},
      {68, 0, 0},  {69, 0, 1},  {70, 1, 3},  {71, 2, 5},
  };
  for (const auto& c : cases) {
    const std::string text(c.length, 'x');
    const std::string border = std::string(c.before + c.length + c.after + 2, '*');
    const std::string expected = "@ \n@ " + border + "\n@ *" + std::string(c.before, ' ') + text +
                                 std::string(c.after, ' ') + "*\n@ " + border + "\n@ ";
    const Variant result = log.call(u"WriteBox", kLow, std::u16string(text.begin(), text.end()));
    EXPECT_EQ(written(), expected + "\n") << c.length;
    EXPECT_EQ(maskedLines(result), expected);
  }
}

TEST_F(Formatted, ABoxDoesNotPrefixItsOwnLineBreaks) {
  EXPECT_FALSE(call(u"WriteBox", kLow, u"a\r\nb").empty());
  const std::string text = written();
  EXPECT_NE(text.find("a\nb   "), std::string::npos) << text;
}

TEST_F(Formatted, ABoxThatCannotBeWrittenRaisesAndLeavesTheLogAlone) {
  EXPECT_EQ(call(u"WriteBox", kMedium, u"filtered out"), "error 91");
  EXPECT_EQ(call(u"WriteBox", kLow, std::u16string(100'000, u'x')), "error 6");
  EXPECT_EQ(call(u"WriteBox", kLow, arrayOf({u"a"})), "error 13");
  EXPECT_EQ(written(), "");
  EXPECT_NE(call(u"WriteBox", kLow, std::u16string(65'000, u'x')), "error 6");
  std::error_code ignored;
  std::filesystem::remove(folder.native() / "log.txt", ignored);
  EXPECT_EQ(call(u"WriteBox", kMedium), "error 91");
  EXPECT_FALSE(platform::fileExists(folder / u"log.txt"));
}

TEST_F(Formatted, GroupsWidenAndNarrowByTen) {
  const std::string expected[] = {bar(18, '=', " ( START"), bar(28, '=', " ( START"),
                                  bar(26, '-', " END )"),   bar(16, '-', " END )"),
                                  bar(6, '-', " END )"),    bar(8, '=', " ( START")};
  const std::u16string_view calls[] = {u"StartGroup", u"StartGroup", u"EndGroup",
                                       u"EndGroup",   u"EndGroup",   u"StartGroup"};
  for (std::size_t i = 0; i < std::size(calls); ++i) {
    EXPECT_EQ(call(calls[i], kMedium), "");  // filtered out: the depth stays
    EXPECT_EQ(call(calls[i], kLow), expected[i]);
    EXPECT_EQ(written(), expected[i] + "\n");
  }
  log.call(u"StartGroup", kLow);
  const auto another = Owned<Logging>::make();
  EXPECT_EQ(apartment().groupDepth, 0);
}

TEST_F(Formatted, TheDepthOfGroupsOverflowsLikeA16BitNumber) {
  apartment().groupDepth = -32'760;
  EXPECT_EQ(call(u"StartGroup", kLow), "error 6");
  EXPECT_EQ(written(), "");
  EXPECT_EQ(apartment().groupDepth, -32'760);
  apartment().groupDepth = 32'760;
  EXPECT_EQ(call(u"EndGroup", kLow), "error 6");  // after its bar was written
  EXPECT_EQ(written(), bar(32'754, '-', " END )") + "\n");
  apartment().groupDepth = 0;
}

TEST_F(Formatted, ParametersAreAligned) {
  const std::u16string longName(40, u'n');
  const std::string blanks = "    ";
  const std::string marked = "*** ERROR ***";
  const struct {
    Variant name, value;
    std::int16_t distance, indent;
    std::string expected;
  } cases[] = {
      {u"Name", u"value", 35, 4, blanks + "Name " + std::string(30, '.') + " value"},
      {longName, std::int32_t{7}, 35, 4,
       blanks + std::string(40, 'n') + " " + std::string(6, '.') + " 7"},
      {u"abc", Boolean::True, 0, 0, "abc .... True"},
      {u"abc", Variant(), -2, 1, " abc ...... "},
      {Variant::null(), Variant::null(), 3, 0, " .. "},
      {u"n", u"a\r\nb\r\nc", 4, 2, "  n .. a\n@        b\n@        c"},
      {u"*** ERROR *** n", u"v", 20, 4, marked + blanks + " n .... v"},
      {u"*** error *** n", u"v", 20, 4, blanks + "*** error *** n .... v"},
      {u"n", u"    *** ERROR ***!", 2, 4, blanks + "n  " + marked + blanks + "!"},
  };
  for (const auto& c : cases) {
    const Variant result = log.call(u"WriteParam", kLow, c.name, c.value, c.distance, c.indent);
    EXPECT_EQ(result.vt, VT_BSTR);
    EXPECT_EQ(written(), "@ " + c.expected + "\n");
    EXPECT_EQ(maskedLines(result), "@ " + c.expected);
  }
  EXPECT_EQ(call(u"WriteParam", kLow, u"Name", u"v"), "@     Name " + std::string(30, '.') + " v");
  const Variant filtered = log.call(u"WriteParam", kMedium, u"Name", arrayOf({}));
  EXPECT_EQ(filtered.vt, VT_BSTR);
  EXPECT_EQ(textOf(filtered), u"");
}

TEST_F(Formatted, ParametersThatCannotBeShownRaise) {
  const std::int16_t distance = 35;
  EXPECT_EQ(call(u"WriteParam", kMedium, u"n", u"v", distance, std::int16_t{-1}), "error 5");
  EXPECT_EQ(call(u"WriteParam", kLow, u"n", arrayOf({u"a"})), "error 13");
  EXPECT_EQ(call(u"WriteParam", kLow, ScriptObject().object(), u"v"), "error 438");
  EXPECT_EQ(call(u"WriteParam", kLow, u"n", u"v", std::int32_t{40'000}), "error 6");
  EXPECT_EQ(written(), "");
}

TEST_F(Formatted, ADumpPrefixesEveryLineTwice) {
  const std::string lines[] = {"@ TEXT DUMP BELOW",
                               bar(18, '=', " ( START"),
                               "@ ",
                               "@ @ \t",
                               "@ @ \tone",
                               "@ @ \ttwo",
                               "@ @ \t",
                               bar(16, '-', " END )"),
                               "@ "};
  std::string expected;
  for (const std::string& line : lines) expected += line + "\n";
  const Variant result = log.call(u"Dump", kLow, u"one\r\ntwo");
  EXPECT_EQ(written(), expected);
  EXPECT_EQ(masked(result), lines[0] + lines[1] + lines[2] + "\r\n" + lines[3] + "\r\n" + lines[4] +
                                "\r\n" + lines[5] + "\r\n" + lines[6] + lines[7] + lines[8]);
  EXPECT_EQ(call(u"Dump", kMedium, u"one", u"Title"), "");
  EXPECT_EQ(written(), "");
}

}  // namespace
}  // namespace quendal::test
