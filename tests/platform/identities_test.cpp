#include "platform/identities.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <set>

#include "base/date.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/messages.h"
#include "platform/module.h"

namespace quendal::platform {
namespace {

TEST(IdentitiesTest, NewIdentifiersAreRandomAndWellFormed) {
  std::set<std::u16string> seen;
  constexpr std::u16string_view expected = u"********-****-4***-#***-************";
  for (int i = 0; i < 1000; ++i) {
    const std::u16string text = newIdentifier();
    ASSERT_EQ(text.size(), expected.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
      const std::u16string_view allowed = expected[at] == u'*'   ? u"0123456789ABCDEF"
                                          : expected[at] == u'#' ? u"89AB"
                                                                 : expected.substr(at, 1);
      ASSERT_NE(allowed.find(text[at]), allowed.npos) << "at " << at;
    }
    EXPECT_TRUE(seen.insert(text).second);
  }
}

TEST(IdentitiesTest, NamesAreNotEmptyAndHoldNoTerminator) {
  for (const std::u16string& name : {computerName(), userName(), ownModulePath()}) {
    EXPECT_FALSE(name.empty());
    EXPECT_EQ(name.find(u'\0'), name.npos);
  }
  EXPECT_TRUE(fileExists(ownModulePath()));
}

TEST(IdentitiesTest, EnvironmentNamesHaveNoCase) {
  EXPECT_TRUE(environmentVariable(u"pAtH") == environmentVariable(u"PATH"));
  EXPECT_FALSE(environmentVariable(u"pAtH").empty());
  for (const std::u16string_view name : {u"QUENDAL_NOT_SET", u"", u"=", u"PATH=", u"systemdriv"})
    EXPECT_TRUE(environmentVariable(name).empty());
  EXPECT_TRUE(environmentVariable(std::u16string_view(u"PATH\0", 5)).empty());
}

TEST(IdentitiesTest, VersionRecordKeepsItsWholeField) {
  const OSVersion version = osVersion();
  EXPECT_TRUE(version.platformId == 2 || version.platformId == 4);
  ASSERT_EQ(version.servicePack.size(), 128u);
  EXPECT_NE(version.servicePack.find(u'\0'), std::u16string::npos);
  EXPECT_TRUE(wow64Flag() == 0 || (wow64Flag() == 1 && sizeof(void*) == 4));
}

TEST(ClockTest, LocalTimeIsUniversalTimeInSomeZone) {
  using namespace std::chrono;
  constexpr double kUnixEpoch = 25569;
  const auto now = duration_cast<seconds>(system_clock::now().time_since_epoch()).count();
  const double local = (localNow() - kUnixEpoch) * 86400;
  EXPECT_NEAR(local, std::round(local), 1e-3);
  const double offset = local - static_cast<double>(now);
  EXPECT_LE(std::abs(offset), 14 * 3600 + 2);
  EXPECT_LE(std::abs(std::remainder(offset, 900)), 2);
  EXPECT_GE(utcMilliseconds(), 0);
  EXPECT_LE(utcMilliseconds(), 999);
}

TEST(ClockTest, WaitWithoutMessagesTakesItsTime) {
  pumpMessages();
  const std::int32_t start = tickCount();
  EXPECT_EQ(waitForMessage(0), WaitResult::TimedOut);
  EXPECT_EQ(waitForMessage(120), WaitResult::TimedOut);
  const std::int32_t passed = tickCount() - start;
  EXPECT_GE(passed, 100);  // the tick count may advance in steps of some 16 ms
  EXPECT_LT(passed, 2000);
}

}  // namespace
}  // namespace quendal::platform
