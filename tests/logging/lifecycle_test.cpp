// Settings, and the page's start and end.
#include <thread>

#include "core/apartment.h"
#include "support/threads.h"
#include "tests/automation/values.h"
#include "tests/logging/logger_fixture.h"

namespace quendal::test {
namespace {

class Lifecycle : public LoggerTest {
 protected:
  PageContext pageFor(const char16_t* address) {
    PageContext page;
    page.serverVariables = {{u"REMOTE_ADDR", address}, {u"PATH_TRANSLATED", folder / u"none.asp"}};
    return page;
  }
};

TEST_F(Lifecycle, SettingsBeginWithTheirDefaultsAndAreStoredAsGiven) {
  const Object fresh = Owned<Logging>::make().object();
  const auto settings = [&] {
    std::string text;
    for (const std::u16string_view name :
         {u"LogLevel", u"RolloverBytes", u"Unicode", u"IsASP", u"Path", u"FileName", u"RemoteIP"})
      text += masked(fresh.get(name)) + ",";
    return text;
  };
  EXPECT_EQ(settings(), "2,5242880,True,False,,,,");
  fresh.put(u"LogLevel", std::int16_t{-5});
  fresh.put(u"RolloverBytes", std::int32_t{-1});
  fresh.put(u"Unicode", Boolean{1});  // only exactly True is True
  fresh.call(u"SetLogFile", std::int16_t{7});
  EXPECT_EQ(settings(), "-5,-1,False,False,,7,,");
  fresh.call(u"Class_Initialize");
  EXPECT_EQ(settings(), "2,5242880,True,False,,7,,");
  EXPECT_EQ(fresh.get(u"PID").lVal, platform::processId());
  EXPECT_EQ(fresh.get(u"ThreadID").vt, VT_I4);
  EXPECT_EQ(textOf(fresh.get(u"UserName")), platform::userName());
  EXPECT_EQ(textOf(fresh.get(u"ComputerName")), platform::computerName());
  EXPECT_EQ(fresh.get(u"OSInfo").pdispVal, fresh.get(u"OSInfo").pdispVal);
  EXPECT_EQ(Object::from(fresh.get(u"ODBCDrivers")).get(u"CompareMode").lVal, 1);
  fresh.call(u"Class_Terminate");
  EXPECT_EQ(fresh.get(u"OSInfo").pdispVal, nullptr);
  EXPECT_EQ(call(u"SetLogPath", Variant::null()), "error 94");
}

TEST_F(Lifecycle, APageGivesItsFolderAndAddressAndTakesItsRequestBack) {
  PageContext page = pageFor(u"10.1.2.3");
  ASSERT_EQ(platform::createFile(folder / u"Default.asp", {}), platform::FileError::None);
  startPage(page);
  EXPECT_EQ(log.get(u"IsASP").boolVal, -1);
  EXPECT_EQ(textOf(log.get(u"Path")) + textOf(log.get(u"FileName")), folder / u"LOGS\\LOG.TXT");
  EXPECT_EQ(textOf(log.get(u"RemoteIP")), u"10.1.2.3");
  page.serverVariables[0].second = u"::1";
  EXPECT_EQ(lines(u"WriteLog", kLow, u"x"), "@::1 x\n");  // asked anew, and no such page
  page.serverVariables[1].second = folder / u"Default.asp";
  EXPECT_EQ(lines(u"WriteLog", kLow, u"a\r\nb"), "@::1 DEFAULT.ASP a\n@::1 DEFAULT.ASP b\n");
  log.call(u"OnEndPage");
  EXPECT_FALSE(apartment().page.request);
  EXPECT_EQ(log.get(u"IsASP").boolVal, -1);
  EXPECT_EQ(lines(u"WriteLog", kLow, u"late"), "error 91");  // the page's name cannot be read
  log.call(u"Class_Initialize");                             // the address stays
  EXPECT_EQ(lines(u"WriteLog", kLow, u"x"), "@10.1.2.3 x\n");
}

TEST_F(Lifecycle, AContextMayComeAsABareUnknownOrFail) {
  PageContext page = pageFor(u"10.1.2.3");
  const Object context = page.object(folder.path());
  VARIANT unknown;
  VariantInit(&unknown);
  unknown.vt = VT_UNKNOWN;
  unknown.punkVal = context.dispatch();
  EXPECT_EQ(rawCall(log, u"OnStartPage", {unknown}).code, S_OK);
  EXPECT_EQ(textOf(log.get(u"RemoteIP")), u"10.1.2.3");
  EXPECT_TRUE(platform::lookAt(folder / u"LOGS").isFolder);
  // A page that does not start leaves no objects behind.
  const std::pair<std::string, Object> rows[] = {
      {"error 58", page.object(folder / u"log.txt")},
      {"error 438", ScriptObject().value(u"Session", context).object()},
      {"error 91", Object()}};
  for (const auto& [error, failing] : rows) {
    EXPECT_EQ(call(u"OnStartPage", failing), error);
    EXPECT_FALSE(apartment().page.session);
    EXPECT_FALSE(apartment().page.request);
  }
  const Object lost = Owned<Logging>::make().object();
  EXPECT_EQ(textOrError([&] { return masked(lost.call(u"WriteLog", kLow)); }), "error 52");
}

// The host's objects may be gone by then.
TEST_F(Lifecycle, AThreadThatEndsInsideItsPageDoesNotReleaseThePagesObjects) {
  PageContext page = pageFor(u"10.0.0.1");
  const Object context = page.object(folder / u"other");
  const auto forEachOfThePage = [&](auto step) {
    for (const auto name : {u"Session", u"Application", u"Request", u"Response", u"Server"})
      step(Object::from(context.get(name)));
  };
  std::vector<ULONG> before, after;
  forEachOfThePage([&](const Object& object) { before.push_back(referencesOf(object)); });
  std::thread([&] {
    const ApartmentThread runtime;
    Owned<Logging>::make().object().call(u"OnStartPage", context);
  }).join();
  forEachOfThePage([](const Object& object) { object.dispatch()->Release(); });
  forEachOfThePage([&](const Object& object) { after.push_back(referencesOf(object)); });
  EXPECT_EQ(after, before);
}

TEST_F(Lifecycle, TwoPagesOnTwoThreadsKeepTheirOwnRequestAndGroupDepth) {
  PageContext page = pageFor(u"10.0.0.1");
  startPage(page);
  apartment().groupDepth = -10;
  std::thread([this] {
    const ApartmentThread runtime;
    EXPECT_EQ(apartment().groupDepth, 0);
    PageContext other = pageFor(u"10.0.0.2");
    const Object otherLog = Owned<Logging>::make().object();
    otherLog.call(u"OnStartPage", other.object(folder / u"other"));
    EXPECT_EQ(masked(otherLog.call(u"WriteLog", kLow, u"x")), "@10.0.0.2 x");
    otherLog.call(u"StartGroup", kLow);
    otherLog.call(u"OnEndPage");
  }).join();
  EXPECT_EQ(apartment().groupDepth, -10);
  EXPECT_EQ(lines(u"WriteLog", kLow, u"x"), "@10.0.0.1 x\n");
}

}  // namespace
}  // namespace quendal::test
