// What a system tells of itself and its users.
#include "platform/identities.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <filesystem>

#include "platform/clock.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/module.h"
#include "platform/sockets.h"

namespace quendal::platform {
namespace {

TEST(IdentitiesTest, NamesAreNotEmptyAndHoldNoTerminator) {
  for (const std::u16string& name : {computerName(), userName(), ownModulePath()}) {
    EXPECT_FALSE(name.empty());
    EXPECT_EQ(name.find(u'\0'), name.npos);
  }
  EXPECT_TRUE(fileExists(ownModulePath()));
  EXPECT_EQ(osVersion().servicePack.size(), 128u);
  EXPECT_FALSE(environmentVariable(u"pAtH").empty());
  using namespace std::string_view_literals;
  for (const auto name : {u"QUENDAL_NOT_SET"sv, u""sv, u"="sv, u"PATH="sv, u"PAT"sv, u"PATH\0"sv})
    EXPECT_TRUE(environmentVariable(name).empty());
}

TEST(ClockTest, LocalTimeIsUniversalTimeInSomeZone) {
  using namespace std::chrono;
  constexpr double kUnixEpoch = 25569;
  const auto now = duration_cast<seconds>(system_clock::now().time_since_epoch()).count();
  const double offset = (localNow() - kUnixEpoch) * 86400 - static_cast<double>(now);
  EXPECT_NEAR(offset, std::round(offset), 1e-3);
  EXPECT_LE(std::abs(offset), 14 * 3600 + 2);
  EXPECT_LE(std::abs(std::remainder(offset, 900)), 2);
  EXPECT_LE(static_cast<unsigned>(utcMilliseconds()), 999u);
}

TEST(Sockets, StartAnswerAndStop) {
  const SocketsStartup startup = startSockets();
  EXPECT_TRUE(startup.started && startup.maxSockets >= 1);
  EXPECT_TRUE(startup.majorVersion == 1 && startup.minorVersion == 1);
  EXPECT_NE(hostName().value_or(""), "");
  EXPECT_EQ(firstAddress("127.0.0.1"), (std::vector<std::uint8_t>{127, 0, 0, 1}));
  EXPECT_TRUE(firstAddress("no.such.host.invalid").empty());
  EXPECT_TRUE(stopSockets());
}

TEST(Folders, TheSystemFolderIsAFolder) {
  EXPECT_EQ(systemFolder(), specialFolder(37));
  EXPECT_NE(systemFolder().back(), u'\\');
  EXPECT_TRUE(std::filesystem::is_directory(systemFolder()));
  for (const int unknown : {-1, 62, 0x7FFFFFFF}) EXPECT_EQ(specialFolder(unknown), u"");
}

}  // namespace
}  // namespace quendal::platform
