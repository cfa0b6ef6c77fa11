#include <gtest/gtest.h>

#include <filesystem>

#include "platform/folders.h"
#include "platform/sockets.h"

namespace quendal::platform {
namespace {

TEST(Sockets, StartAnswerAndStop) {
  const SocketsStartup startup = startSockets();
  ASSERT_TRUE(startup.started);
  EXPECT_GE(startup.maxSockets, 1);
  EXPECT_EQ(startup.majorVersion, 1);
  EXPECT_EQ(startup.minorVersion, 1);

  const auto name = hostName();
  ASSERT_TRUE(name.has_value());
  EXPECT_FALSE(name->empty());
  EXPECT_EQ(name->find('\0'), std::string::npos);

  EXPECT_EQ(firstAddress("127.0.0.1"), (std::vector<std::uint8_t>{127, 0, 0, 1}));
  EXPECT_TRUE(firstAddress("no.such.host.invalid").empty());
  EXPECT_TRUE(firstAddress("not a host name").empty());
  EXPECT_TRUE(stopSockets());
}

TEST(Folders, TheSystemFolderIsAFolder) {
  const std::u16string system = systemFolder();
  ASSERT_FALSE(system.empty());
  EXPECT_NE(system.back(), u'\\');
  EXPECT_EQ(system, specialFolder(37));
  EXPECT_TRUE(std::filesystem::is_directory(system));
  for (const int unknown : {-1, 62, 1000, 0x7FFFFFFF}) EXPECT_EQ(specialFolder(unknown), u"");
}

}  // namespace
}  // namespace quendal::platform
