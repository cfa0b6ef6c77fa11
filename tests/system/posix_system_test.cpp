// System queries where the environment says what the system answers.
#include <gtest/gtest.h>

#include "core/dispatch.h"
#include "support/text_rows.h"
#include "system/os_info.h"
#include "tests/platform/posix_environment.h"
#include "tests/platform/temp_folder.h"

namespace quendal {
namespace {

TEST(OsInfo, ReadsTheEnvironment) {
  const platform::TempFolder folder;
  const Object info = Owned<OsInfo>::make().object();
  const std::string temp = toUtf8(folder / u"temp");
  const platform::EnvironmentChange variables[] = {{"temp", temp + "\\\\"},
                                                   {"os", "an os"},
                                                   {"username", "a user"},
                                                   {"systemdrive", "a drive"},
                                                   {"windir", "a folder"}};
  EXPECT_EQ(toUtf8(textOf(info.get(u"TempDir"))), temp);
  test::forEachPair(u"OS=an os|UserName=a user|SystemDrive=a drive|WinDir=a folder",
                    [&](std::u16string_view property, const std::string& value) {
                      EXPECT_EQ(toUtf8(textOf(info.get(property))), value);
                    });
  EXPECT_TRUE(platform::lookAt(folder / u"temp").isFolder);
  const platform::EnvironmentChange none("temp", "\\");
  EXPECT_EQ(textOf(info.get(u"TempDir")), u"");
}

}  // namespace
}  // namespace quendal
