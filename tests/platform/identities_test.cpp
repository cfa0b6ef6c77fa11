// What a system tells of itself and its users, and how its registry's bytes are read.
#include <gtest/gtest.h>

#include <ctime>
#include <filesystem>
#include <stdexcept>
#include <tuple>

#include "base/date.h"
#include "base/utf8.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/identities.h"
#include "platform/module.h"
#include "platform/registry_data.h"
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
  EXPECT_TRUE(std::filesystem::is_directory(systemFolder()));
  EXPECT_EQ(specialFolder(62) + specialFolder(-1), u"");
  EXPECT_FALSE(environmentVariable(u"pAtH").empty());
  using namespace std::string_view_literals;
  for (const auto name : {u"QUENDAL_NOT_SET"sv, u""sv, u"="sv, u"PATH="sv, u"PAT"sv, u"PATH\0"sv})
    EXPECT_TRUE(environmentVariable(name).empty());
}

// The test scripts set a time zone that is not universal time.
TEST(ClockTest, TellsLocalTime) {
  const std::time_t now = std::time(nullptr);
  const std::tm local = *std::localtime(&now);
  const double expected = dateSerial(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                                     local.tm_hour, local.tm_min, local.tm_sec);
  EXPECT_NEAR(localNow(), expected, 2.0 / 86400);
}

TEST(Sockets, StartAnswerAndStop) {
  const SocketsStartup startup = startSockets();
  EXPECT_TRUE(startup.started && startup.majorVersion == 1 && startup.minorVersion == 1);
  EXPECT_NE(hostName().value_or(""), "");
  EXPECT_EQ(firstAddress("127.0.0.1"), (std::vector<std::uint8_t>{127, 0, 0, 1}));
  EXPECT_TRUE(firstAddress("no.such.host.invalid").empty());
  EXPECT_TRUE(stopSockets());
}

TEST(RegistryData, FollowsItsTypeWhenListedAndLosesOneByteWhenReadAsText) {
  using namespace std::string_literals;
  const std::string full(255, 'x');
  const std::vector raw = {std::byte{1}, std::byte{0}, std::byte{127}};
  const std::tuple<std::uint32_t, std::string, RegistryData, std::string> kRows[] = {
      {1, "Windows\0"s, u"Windows"s, "Windows"},
      {1, "\0"s, u""s, ""},
      {2, "%Path%\0"s, u"%Path%"s, "%Path%"},
      {3, "\1\0\177"s, raw, "\1\0"s},
      {4, "~\3\2\x80"s, -2147351682, "~\3\2"},
      {4, "\5", 5, ""},
      {7, "a\0b\0\0"s, u"a\0b"s, "a\0b\0"s},
      {7, "x", u""s, ""},
      {11, "12345678", std::monostate(), "1234567"},
      {1, full + '\0', fromUtf8(full), full},
      {1, full + "x" + '\0', fromUtf8(full + "x"), "<Error>"},
  };
  for (const auto& [type, bytes, listed, text] : kRows) {
    EXPECT_TRUE(registryData(type, bytes) == listed) << type << " " << bytes;
    EXPECT_EQ(toUtf8(registryTextOf(bytes)), text);
  }
  EXPECT_THROW((void)registryTextOf({}), std::invalid_argument);
  EXPECT_TRUE(registryData(1, {}) == RegistryData(u""s));
}

}  // namespace
}  // namespace quendal::platform
