// System queries where the environment says what the system answers.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "base/utf8.h"
#include "core/apartment.h"
#include "core/dispatch.h"
#include "system/os_info.h"
#include "tests/platform/temp_folder.h"

namespace quendal {
namespace {

/// Sets a variable of the environment while it lives.
class Environment {
 public:
  Environment(const char* name, const std::string& value) : name_(name) {
    if (const char* const before = std::getenv(name)) before_ = before;
    setenv(name, value.c_str(), 1);
  }
  ~Environment() { before_.empty() ? unsetenv(name_) : setenv(name_, before_.c_str(), 1); }
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;

 private:
  const char* name_;
  std::string before_;
};

TEST(SystemQueries, ReadTheRegistry) {
  const platform::TempFolder folder;
  const std::string file = folder.native() / "registry.reg";
  const Environment registry("QUENDAL_REGISTRY", file);
  const auto write = [&file](const char* productName) {
    std::ofstream(file) << "REGEDIT4\n\n[SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion]\n"
                        << productName << R"(
[Software\Microsoft\.NETFramework\policy\v2.0]
"50727"="x"
[Software\Microsoft\.NETFramework\policy\v10.0]
"1"="x"
[Software\Microsoft\.NETFramework\policy\v4.0]
"30319"="x"
"30128"="x"
[Software\Microsoft\.NETFramework\policy\v9Upgrades]
"5"="x"
[Software\ODBC\ODBCINST.INI\ODBC Drivers]
"Second"="Installed"
"Removed"="not installed"
"First"="INSTALLED"
"Number"=dword:00000001
)";
  };
  write("\"ProductName\"=\"Server\"");
  EXPECT_EQ(system::queryDotNetVersion(), u"4.0.30319");
  EXPECT_EQ(system::queryODBCDrivers(), (std::vector<std::u16string>{u"Second", u"First"}));
  system::recordOSVersion();
  EXPECT_EQ(apartment().osVersion.productName, u"Server");
  write("");
  system::recordOSVersion();
  EXPECT_EQ(apartment().osVersion.productName, u"<Error>");
  write("\"ProductName\"=hex(1):");
  try {
    system::recordOSVersion();
    ADD_FAILURE();
  } catch (const AutomationError& error) {
    EXPECT_EQ(error.number(), error_number::kInvalidCall);
  }
}

TEST(OsInfo, ReadsTheEnvironment) {
  const platform::TempFolder folder;
  const Object info = Owned<OsInfo>::make().object();
  const std::string temp = toUtf8(folder / u"temp");
  const Environment variables[] = {{"temp", temp + "\\\\"},
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
  const Environment none("temp", "\\");
  EXPECT_EQ(textOf(info.get(u"TempDir")), u"");
}

}  // namespace
}  // namespace quendal
