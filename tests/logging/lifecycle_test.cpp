// Settings, the page's start and end, and plain entries.
#include <gtest/gtest.h>

#include <thread>

#include "core/apartment.h"
#include "support/apartment_thread.h"
#include "tests/core/raw_call.h"
#include "tests/logging/logger_fixture.h"

namespace quendal::test {
namespace {

class LifecycleTest : public LoggerTest {};

PageContext pageFor(const char16_t* address) {
  PageContext page;
  page.serverVariables = {{u"REMOTE_ADDR", address}, {u"PATH_TRANSLATED", u"C:\\none\\page.asp"}};
  return page;
}

TEST_F(LifecycleTest, ANewLoggerHasItsDefaults) {
  const Owned<Logging> fresh = Owned<Logging>::make();
  EXPECT_EQ(fresh->logLevel(), 2);
  EXPECT_EQ(fresh->rolloverBytes(), 5242880);
  EXPECT_EQ(fresh->unicode(), Boolean::True);
  EXPECT_EQ(fresh->isAsp(), Boolean::False);
  for (const Variant& text : {fresh->path(), fresh->fileName(), fresh->remoteIp()}) {
    EXPECT_EQ(text.vt, VT_BSTR);
    EXPECT_EQ(textOf(text), u"");
  }
  EXPECT_EQ(fresh->pid().vt, VT_I4);
}

TEST_F(LifecycleTest, SettingsAreStoredAsGiven) {
  log.put(u"LogLevel", std::int16_t{-5});
  EXPECT_EQ(log.get(u"loglevel").iVal, -5);
  log.put(u"RolloverBytes", std::int32_t{-1});
  EXPECT_EQ(log.get(u"RolloverBytes").lVal, -1);
  log.put(u"Unicode", Boolean{1});  // only exactly True is True
  EXPECT_EQ(log.get(u"Unicode").boolVal, 0);
  log.put(u"Unicode", Boolean::True);
  EXPECT_EQ(log.get(u"Unicode").boolVal, -1);
}

TEST_F(LifecycleTest, ObjectsItHandsOutKeepOrLoseTheirIdentity) {
  EXPECT_EQ(log.get(u"OSInfo").pdispVal, log.get(u"OSInfo").pdispVal);
  const Variant first = log.get(u"ODBCDrivers"), second = log.get(u"ODBCDrivers");
  EXPECT_NE(first.pdispVal, second.pdispVal);
  EXPECT_EQ(Object::from(first).get(u"CompareMode").lVal, 1);
}

TEST_F(LifecycleTest, APageGivesItsFolderAndAddressAndTakesItsRequestBack) {
  PageContext page = pageFor(u"10.1.2.3");
  startPage(page);
  EXPECT_EQ(log.get(u"IsASP").boolVal, -1);
  EXPECT_EQ(textOf(log.get(u"Path")), folder.path() + u"\\LOGS\\");
  EXPECT_EQ(textOf(log.get(u"FileName")), u"LOG.TXT");
  EXPECT_EQ(textOf(log.get(u"RemoteIP")), u"10.1.2.3");
  EXPECT_TRUE(platform::lookAt(folder / u"LOGS").isFolder);

  log.call(u"OnEndPage");
  EXPECT_FALSE(apartment().page.request);
  EXPECT_EQ(log.get(u"IsASP").boolVal, -1);
  EXPECT_EQ(call(u"WriteLog", kLow, u"late"), "error 91");  // the page's name cannot be read
}

TEST_F(LifecycleTest, AContextMayComeAsABareUnknown) {
  PageContext page = pageFor(u"10.1.2.3");
  const Object context = page.object(folder.path());
  VARIANT unknown;
  VariantInit(&unknown);
  unknown.vt = VT_UNKNOWN;
  unknown.punkVal = context.dispatch();
  EXPECT_EQ(rawCall(log, u"OnStartPage", {unknown}).code, S_OK);
  EXPECT_EQ(textOf(log.get(u"RemoteIP")), u"10.1.2.3");
}

TEST_F(LifecycleTest, AFailingContextIsRaised) {
  EXPECT_EQ(call(u"OnStartPage", Object()), "error 91");
  EXPECT_EQ(call(u"OnStartPage", ScriptObject().object()), "error 438");
  // Without page and settings there is nowhere to write.
  EXPECT_EQ(textOrError([] {
              Owned<Logging>::make().object().call(u"WriteLog", kLow, u"x");
              return std::string();
            }),
            "error 52");
}

TEST_F(LifecycleTest, TwoPagesOnTwoThreadsKeepTheirOwnRequestAndGroupDepth) {
  PageContext page = pageFor(u"10.0.0.1");
  startPage(page);
  apartment().groupDepth = -10;
  std::thread([] {
    const ApartmentThread runtime;
    EXPECT_FALSE(apartment().page.request);
    EXPECT_EQ(apartment().groupDepth, 0);
    PageContext other = pageFor(u"10.0.0.2");
    const platform::TempFolder otherFolder;
    const Object otherLog = Owned<Logging>::make().object();
    otherLog.call(u"OnStartPage", other.object(otherFolder.path()));
    EXPECT_NE(textOf(otherLog.call(u"WriteLog", kLow, u"x")).find(u" 10.0.0.2 "),
              std::u16string::npos);
    otherLog.call(u"StartGroup", kLow);
    otherLog.call(u"OnEndPage");
  }).join();
  EXPECT_EQ(apartment().groupDepth, -10);
  EXPECT_NE(textOf(log.call(u"WriteLog", kLow, u"x")).find(u" 10.0.0.1 "), std::u16string::npos);
}

TEST_F(LifecycleTest, EntriesAreFilteredByLevel) {
  const auto entryOf = [this](int level) {
    return call(u"WriteLog", static_cast<std::int16_t>(level), u"t");
  };
  for (const int level : {0, 1, 2}) EXPECT_NE(entryOf(level), "");
  static_cast<void>(written());
  for (const int level : {3, 7, 32767}) EXPECT_EQ(entryOf(level), "");
  log.put(u"LogLevel", std::int16_t{0});
  EXPECT_EQ(call(u"WriteLog", std::int16_t{1}, u"t"), "");
  EXPECT_EQ(written(), "");
}

TEST_F(LifecycleTest, RepeatsAndContinuationLinesBeginWithThePrefixOfTheLast) {
  Variant repeat(std::int16_t{-3}), stamp;
  const Variant level(kLow), text(u"a\r\nb");
  const auto write = [&] {
    return rawCall(log, u"WriteLog", {level, text, referenceTo(repeat), referenceTo(stamp)});
  };
  const Outcome once = write();
  EXPECT_EQ(repeat.iVal, 1);
  const std::u16string prefix = textOf(stamp);
  EXPECT_TRUE(prefix.ends_with(u"  "));  // no address is known outside a page
  EXPECT_EQ(textOf(once.value), prefix + u"a\r\n" + prefix + u"b");

  repeat = std::int16_t{3};
  const std::u16string result = textOf(write().value);
  const std::u16string last = textOf(stamp);
  std::size_t lines = 0, doubled = 0;
  for (std::size_t at = result.find(u"\r\n"); at != result.npos;
       at = result.find(u"\r\n", at + 1)) {
    ++lines;
    EXPECT_EQ(result.compare(at + 2, last.size(), last), 0);
    if (result.compare(at + 2 + last.size(), 1, u"b") != 0) ++doubled;
  }
  EXPECT_EQ(lines, 5u);
  EXPECT_EQ(doubled, 2u);  // the second and the third repetition
}

TEST_F(LifecycleTest, AnyValueBecomesTextOrRaises) {
  const struct {
    Variant value;
    const char* text;  // after the prefix, or the error
  } rows[] = {{Variant(2.5), "2.5"},
              {Variant(Boolean::True), "True"},
              {Variant(), ""},
              {Variant::null(), ""},
              {Variant::missing(), ""},
              {arrayOf({Variant(u"x")}), "error 13"},
              {Variant(Object()), "error 91"},
              {Variant(ScriptObject().object()), "error 438"},
              {Variant(ScriptObject().defaultMember([](auto) { return Variant(u"own"); }).object()),
               "own"}};
  for (const auto& row : rows) {
    const std::string result = call(u"WriteLog", kLow, row.value);
    EXPECT_TRUE(result.ends_with(row.text)) << result;
    EXPECT_EQ(result.starts_with("error"), std::string_view(row.text).starts_with("error"));
  }
}

TEST_F(LifecycleTest, ThePagesFileNameStandsInTheLineWhenItExists) {
  ASSERT_EQ(platform::createFile(folder / u"Default.asp", {}), platform::FileError::None);
  PageContext page = pageFor(u"::1");
  page.serverVariables[1].second = folder / u"Default.asp";
  startPage(page);
  EXPECT_TRUE(textOf(log.call(u"WriteLog", kLow, u"text")).ends_with(u" ::1 DEFAULT.ASP text"));
}

}  // namespace
}  // namespace quendal::test
