// What Linux tells of itself and its users, and of a registry that it does not have.
#include <sys/utsname.h>

#include <fstream>

#include "base/utf8.h"
#include "core/apartment.h"
#include "core/dispatch.h"
#include "platform/posix/host_files.h"
#include "platform/posix/registry_tree.h"
#include "platform/registry.h"
#include "system/os_info.h"
#include "system/queries.h"
#include "tests/platform/posix_environment.h"
#include "tests/platform/temp_folder.h"
#include "tests/support/text_rows.h"

namespace quendal::platform {
namespace {

std::string joined(const std::vector<std::u16string>& texts) {
  std::string all;
  for (const std::u16string& text : texts) all += toUtf8(text) + ";";
  return all;
}

class PosixRegistry : public testing::Test {
 protected:
  PosixRegistry() { answerFrom(&tree_); }
  ~PosixRegistry() override { answerFrom(nullptr); }

  static StoredValue text(std::u16string name, const std::string& value) {
    return {std::move(name), 1, value + '\0'};
  }
  const std::u16string policy_ = u"SOFTWARE\\Microsoft\\.NETFramework\\Policy";
  const std::u16string product_ = u"Software\\Microsoft\\Windows NT\\CurrentVersion";
  const RegistryTree tree_ = {{product_, {text(u"PRODUCTNAME", "Test 1")}},
                              {u"Software\\ODBC\\ODBCINST.INI\\ODBC Drivers",
                               {text(u"One", "Installed"),
                                text(u"Gone", "Removed"),
                                {u"Two", 2, std::string("INSTALLED\0", 10)},
                                {u"Number", 4, "\1\1\1\1"}}},
                              {policy_ + u"\\v2.0", {text(u"50727", "50727-50727")}},
                              {policy_ + u"\\Upgrades", {text(u"1.0", "x")}},
                              {policy_ + u"\\v10.0\\Deep", {text(u"hidden", "")}},
                              {policy_ + u"\\v10.0", {text(u"7", "7"), text(u"30319", "30319")}},
                              {policy_ + u"Other", {text(u"x", "x")}}};
  const TempFolder owner_;
  const std::filesystem::path folder_ = owner_.native();
  const EnvironmentChange drivers_{"ODBCSYSINI", folder_}, runtimes_{"DOTNET_ROOT", folder_};
};

TEST_F(PosixRegistry, AnswersForItsKeys) {
  EXPECT_EQ(joined(registryKeys(u"")), "Software;");
  EXPECT_EQ(joined(registryKeys(policy_)), "v2.0;Upgrades;v10.0;");
  EXPECT_EQ(registryText(policy_ + u"\\V2.0", u"50727"), u"50727-50727");
  EXPECT_EQ(registryText(policy_ + u"\\v2.0", u"5072"), u"<Error>");
  for (const auto missing : {u"\\v2", u"\\v2.0\\50727", u"\\v10.0\\Deep\\er"})
    EXPECT_EQ(registryText(policy_ + missing, u"50727"), std::nullopt);
}

TEST_F(PosixRegistry, QueriesTakeWhatCounts) {
  EXPECT_EQ(joined(system::queryODBCDrivers()), "One;Two;");
  EXPECT_EQ(system::queryDotNetVersion(), u"2.0.50727");  // by characters, on purpose
  system::recordOSVersion();
  EXPECT_EQ(apartment().osVersion.productName, u"Test 1");
  const RegistryTree none = {{product_, {}}}, noBytes = {{product_, {{u"ProductName", 1, ""}}}};
  answerFrom(&none);
  system::recordOSVersion();
  EXPECT_EQ(apartment().osVersion.productName, u"<Error>");
  answerFrom(&noBytes);
  EXPECT_THROW(system::recordOSVersion(), AutomationError);
}

TEST_F(PosixRegistry, WithoutOneTheSystemIsAsked) {
  answerFrom(nullptr);
  EXPECT_TRUE(system::queryODBCDrivers().empty());
  // Drivers are the sections of the driver manager's file.
  std::ofstream(folder_ / "odbcinst.ini")
      << "# drivers\n[ODBC]\nTrace=No\n\n[PostgreSQL ANSI]\r\nDriver=/x[y].so\n [ Ünï ] \n"
         "[ODBC Drivers]\n[broken\n[]\n[MySQL]\n";
  EXPECT_EQ(joined(system::queryODBCDrivers()), "PostgreSQL ANSI;Ünï;MySQL;");

  const auto runtimes = folder_ / "shared/Microsoft.NETCore.App";
  for (const char* name : {"908.0.11", "908.0.2", "906.0", "x.y.z", "98..1"})
    std::filesystem::create_directories(runtimes / name);
  std::ofstream(runtimes / "99.0.1") << "not a folder";
  EXPECT_EQ(system::queryDotNetVersion(), u"908.0.2");  // by characters, on purpose

  const auto release = readTextFile("/etc/os-release");
  if (!release) GTEST_SKIP() << "the system has no release file";
  system::recordOSVersion();
  const auto name = "PRETTY_NAME=\"" + toUtf8(apartment().osVersion.productName) + "\"\n";
  EXPECT_NE(release->find(name), std::string::npos) << name;
}

TEST(OsInfo, ReadsTheEnvironment) {
  const TempFolder folder;
  const Object info = Owned<OsInfo>::make().object();
  const std::string temp = toUtf8(folder / u"temp");
  const EnvironmentChange variables[] = {{"temp", temp + "\\\\"},
                                         {"os", "an os"},
                                         {"username", "a user"},
                                         {"systemdrive", "a drive"},
                                         {"XDG_CONFIG_HOME", folder.native().string()},
                                         {"XDG_DATA_HOME", folder.native() / "data"},
                                         {"windir", "a folder"}};
  EXPECT_EQ(toUtf8(textOf(info.get(u"TempDir"))), temp);
  test::forEachPair(u"OS=an os|UserName=a user|SystemDrive=a drive|WinDir=a folder",
                    [&](std::u16string_view property, const std::string& value) {
                      EXPECT_EQ(toUtf8(textOf(info.get(property))), value);
                    });
  EXPECT_TRUE(lookAt(folder / u"temp").isFolder);
  EXPECT_EQ(createFolder(folder / u"data"), FileError::None);
  EXPECT_EQ(textOf(info.get(u"ApplicationDataFolder")), folder.native().u16string() + u"\\");
  EXPECT_EQ(textOf(info.get(u"LocalApplicationDataFolder")),
            folder.native().u16string() + u"/data\\");
  const EnvironmentChange none("temp", "\\");
  EXPECT_EQ(textOf(info.get(u"TempDir")), u"");
}

TEST(HostFiles, AssignedValues) {
  const std::pair<const char*, std::optional<std::string>> kCases[] = {
      {"# NAME=no\nNAME=\"two words\" # note\n", "two words"},
      {"NAME='single \\ $'\r\n", "single \\ $"},
      {R"(NAME="a \"b\" \\ \$")", "a \"b\" \\ $"},
      {"NAMES=x\nAN_NAME=y\nNAME", std::nullopt},
  };
  for (const auto& [file, value] : kCases) EXPECT_EQ(assignedValue(file, "NAME"), value);
}

TEST(PosixIdentitiesTest, EnvironmentAnswersInAnyCaseAndFirstInTheOneAskedFor) {
  const EnvironmentChange upper("QUENDAL_X", "gr\xC3\xBC\xC3\x9F");
  EXPECT_EQ(environmentVariable(u"quendal_x"), u"gr\u00FC\u00DF");
  EXPECT_TRUE(environmentVariable(u"quendal_").empty());
  const EnvironmentChange exact("quendal_x", "");
  EXPECT_EQ(environmentVariable(u"quendal_x"), u"");
}

TEST(PosixIdentitiesTest, UserNameFollowsTheAccountOfTheMoment) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can change the account";
  EXPECT_TRUE(holdsInChild([] {
    ::unsetenv("USER");
    return userName() == u"root" && ::seteuid(3999999) == 0 && userName() == u"3999999";
  }));
}

TEST(PosixIdentitiesTest, TheVersionIsThatOfTheKernel) {
  const OSVersion version = osVersion();
  utsname system;
  ASSERT_EQ(::uname(&system), 0);
  const std::string told = std::to_string(version.major) + "." + std::to_string(version.minor);
  EXPECT_TRUE(std::string(system.release).starts_with(told)) << told;
  EXPECT_EQ(version.servicePack, std::u16string(1, u'\0') + std::u16string(127, u' '));
}

}  // namespace
}  // namespace quendal::platform
