#include "platform/identities.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>

#include "platform/clock.h"
#include "platform/files.h"
#include "platform/module.h"

namespace quendal::platform {
namespace {

TEST(IdentitiesTest, NewIdentifiersSayThatTheyAreRandom) {
  for (int i = 0; i < 100; ++i) {
    const std::u16string text = newIdentifier();
    ASSERT_EQ(text.size(), 36u);
    EXPECT_EQ(text[14], u'4');
    EXPECT_NE(std::u16string_view(u"89AB").find(text[19]), std::u16string_view::npos);
  }
}

TEST(IdentitiesTest, NamesAreNotEmptyAndHoldNoTerminator) {
  for (const std::u16string& name : {computerName(), userName(), ownModulePath()}) {
    EXPECT_FALSE(name.empty());
    EXPECT_EQ(name.find(u'\0'), name.npos);
  }
  EXPECT_TRUE(fileExists(ownModulePath()));
  EXPECT_FALSE(environmentVariable(u"pAtH").empty());
  using namespace std::string_view_literals;
  for (const auto name : {u"QUENDAL_NOT_SET"sv, u""sv, u"="sv, u"PATH="sv, u"PAT"sv, u"PATH\0"sv})
    EXPECT_TRUE(environmentVariable(name).empty());
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

}  // namespace
}  // namespace quendal::platform
