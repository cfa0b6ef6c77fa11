// System queries where the environment says what the system answers.
#include <gtest/gtest.h>

#include "base/utf8.h"
#include "core/dispatch.h"
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
  const std::pair<std::u16string_view, std::string> rows[] = {{u"TempDir", temp},
                                                              {u"OS", "an os"},
                                                              {u"UserName", "a user"},
                                                              {u"SystemDrive", "a drive"},
                                                              {u"WinDir", "a folder"}};
  for (const auto& [property, value] : rows)
    EXPECT_EQ(toUtf8(textOf(info.get(property))), value) << toUtf8(property);
  EXPECT_TRUE(platform::lookAt(folder / u"temp").isFolder);
  const platform::EnvironmentChange none("temp", "\\");
  EXPECT_EQ(textOf(info.get(u"TempDir")), u"");
}

}  // namespace
}  // namespace quendal
