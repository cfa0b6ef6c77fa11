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
