// Entries that record failures.
#include "core/apartment.h"
#include "tests/logging/logger_fixture.h"

namespace quendal::test {
namespace {

const std::string kBanner =
    "@ *** ERROR ***  *** ERROR ***  Tolvex has detected a critical error.\n";
const std::string kMarked = "@ *** ERROR *** text\n";
const std::string kDetails =
    "@ *** Microsoft Error Code    *** = -2147352567\n"
    "@ *** Microsoft Error Source  *** = Page\n"
    "@ *** Microsoft Error Message *** = \n";

class Errors : public LoggerTest {
 protected:
  /// Calls a member and gives what it wrote, checking that it returned that, run together.
  template <class... Values>
  std::string lines(std::u16string_view member, Values&&... arguments) {
    const std::string returned = call(member, std::forward<Values>(arguments)...);
    std::string log = written();
    EXPECT_EQ(returned, runTogether(log));
    return log;
  }

  const Object error = ScriptObject()
                           .value(u"Number", std::int32_t{-2147352567})
                           .value(u"Source", u"Page")
                           .value(u"Description", Variant::null())
                           .object();
};

TEST_F(Errors, AMarkedErrorIsRepeatedAndThenTheBanner) {
  EXPECT_EQ(lines(u"WriteError", kLow, u"text"), kMarked);
  EXPECT_EQ(lines(u"WriteError", kLow, u"text", std::int16_t{3}),
            kMarked + kMarked + kMarked + kBanner + kBanner + kBanner);
  EXPECT_EQ(lines(u"WriteError", kLow), "@ *** ERROR *** \n");
  Variant repeat = std::int16_t{-4};
  EXPECT_EQ(lines(u"WriteError", kMedium, arrayOf({}), referenceTo(repeat)), "");
  EXPECT_EQ(int16Of(repeat), 1);  // even when the entry is filtered out
}

TEST_F(Errors, AScriptErrorIsToldWithItsTextFirstAndLast) {
  EXPECT_EQ(lines(u"LogMSError", kLow, error, u"text"), kMarked + kDetails + kMarked);
  EXPECT_EQ(lines(u"LogMSError", kLow, error), "@ *** ERROR *** \n" + kDetails);
  EXPECT_EQ(lines(u"LogMSError", kLow, error, u"text", std::int16_t{2}),
            kBanner + kBanner + kMarked + kDetails + kMarked);
  EXPECT_EQ(lines(u"LogMSError", kMedium, error, u"text"), "");
}

TEST_F(Errors, AnObjectWithoutAMemberRaisesAfterWholeLines) {
  const Object incomplete =
      ScriptObject().value(u"Number", std::int16_t{9}).value(u"source", u"Page").object();
  EXPECT_EQ(call(u"LogMSError", kLow, incomplete, u"text"), "error 438");
  EXPECT_EQ(written(), kMarked +
                           "@ *** Microsoft Error Code    *** = 9\n"
                           "@ *** Microsoft Error Source  *** = Page\n");
  EXPECT_EQ(call(u"LogXMLError", kMedium, incomplete), "error 438");
  EXPECT_EQ(call(u"LogMSError", kLow, Object()), "error 91");
}

TEST_F(Errors, AParserErrorIsToldUnlessThereIsNone) {
  const auto document = [](Variant code) {
    const Object error = ScriptObject()
                             .value(u"errorCode", std::move(code))
                             .value(u"url", u"")
                             .value(u"line", std::int32_t{2})
                             .value(u"linepos", std::int32_t{14})
                             .value(u"reason", u"End tag\r\n")
                             .value(u"srcText", Variant::null())
                             .object();
    return ScriptObject().value(u"parseError", error).object();
  };
  const std::string told =
      "@ *** XML Parser Error URL      *** = \n@ *** XML Parser Error Line     *** = 2\n"
      "@ *** XML Parser Error Position *** = 14\n"
      "@ *** XML Parser Error Code     *** = -1072896659\n"
      "@ *** XML Parser Error Reason   *** = End tag\n@ \n"
      "@ *** XML Parser Error Source   *** = \n";
  const Variant code = std::int32_t{-1072896659};
  log.call(u"LogXMLError", kLow, document(code), u"text");
  EXPECT_EQ(written(), kMarked + told);
  log.call(u"LogXMLError", kLow, document(code), u"", std::int16_t{2});
  EXPECT_EQ(written(), kBanner + kBanner + told);
  for (const Variant& none : {Variant(std::int32_t{0}), Variant(), Variant::null()})
    EXPECT_EQ(lines(u"LogXMLError", kLow, document(none), u"text"), "");
  EXPECT_EQ(lines(u"LogXMLError", kMedium, document(code), u"text"), "");

  // A member that fails, whatever its error is, and a text that is none, after the banners.
  const Object failing =
      ScriptObject()
          .value(u"errorCode", code)
          .member(u"url",
                  [](auto) -> Variant { throw AutomationError::passedOn(E_NOTIMPL, {}, {}); })
          .object();
  const Object bad = ScriptObject().value(u"parseError", failing).object();
  EXPECT_EQ(call(u"LogXMLError", kLow, bad, u"text"), "error -2147467263");
  EXPECT_EQ(written(), kMarked);
  EXPECT_EQ(call(u"LogXMLError", kLow, bad, arrayOf({u"a"}), std::int16_t{2}), "error 13");
  EXPECT_EQ(written(), kBanner + kBanner);
  Variant stamp;
  EXPECT_EQ(call(u"WriteLog", kLow, arrayOf({u"a"}), std::int16_t{1}, referenceTo(stamp)),
            "error 13");
  EXPECT_EQ(masked(stamp), "@ ");
}

TEST_F(Errors, CatchFollowsTheLibrarysOwnErrorState) {
  log.call(u"WriteLog", kLow, u"all is well");
  static_cast<void>(written());
  EXPECT_EQ(lines(u"Catch", error, u"text"), "");

  EXPECT_EQ(call(u"WriteBox", kMedium, u"fails"), "error 91");
  EXPECT_EQ(lines(u"Catch", error, u"text", std::int16_t{2}),
            kBanner + kBanner + kMarked + kDetails);
  EXPECT_EQ(lines(u"Catch", error), "");  // told once

  apartment().errorNumber = 5;
  EXPECT_EQ(lines(u"Catch", error), kDetails);
}

}  // namespace
}  // namespace quendal::test
