// What the system's queries make of a registry, and what Linux knows of what they ask.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "base/utf8.h"
#include "core/apartment.h"
#include "platform/posix/host_files.h"
#include "platform/registry.h"
#include "system/queries.h"
#include "tests/platform/posix_environment.h"
#include "tests/platform/scratch_registry.h"
#include "tests/platform/temp_folder.h"

namespace quendal::platform {
namespace {

std::string joined(const std::vector<std::u16string>& texts) {
  std::string all;
  for (const std::u16string& text : texts) all += toUtf8(text) + ";";
  return all;
}

TEST(SystemRegistry, QueriesTakeWhatCountsAndLeaveTheRest) {
  const auto text = [](const std::string& value) { return value + '\0'; };
  const std::string policy = "SOFTWARE\\Microsoft\\.NETFramework\\Policy\\";
  const ScratchRegistry scratch(
      {{"Software\\Microsoft\\Windows NT\\CurrentVersion", {{"PRODUCTNAME", 1, text("Test 1")}}},
       {"Software\\ODBC\\ODBCINST.INI\\ODBC Drivers",
        {{"One", 1, text("Installed")},
         {"Gone", 1, text("Removed")},
         {"Two", 2, text("INSTALLED")},
         {"Number", 4, text("Installed")}}},
       {policy + "v2.0", {{"50727", 1, text("50727-50727")}}},
       {policy + "Upgrades", {{"1.0", 1, text("x")}}},
       {policy + "v10.0", {{"7", 1, text("7")}, {"30319", 1, text("30319")}}},
       {"Software\\Microsoft\\.NETFramework\\Other", {{"x", 1, text("x")}}}});
  EXPECT_EQ(joined(system::queryODBCDrivers()), "One;Two;");
  EXPECT_EQ(joined(system::queryDotNetVersions()), "2.0.50727;10.0.7;10.0.30319;");
  EXPECT_EQ(system::queryDotNetVersion(), u"2.0.50727");  // by characters, on purpose
  static_cast<void>(system::queryOSName());
  EXPECT_EQ(apartment().osVersion.productName, u"Test 1");
}

class SystemFacts : public testing::Test {
 protected:
  const TempFolder owner_;
  const std::filesystem::path folder_ = owner_.native();
  const EnvironmentChange drivers_{"ODBCSYSINI", folder_}, runtimes_{"DOTNET_ROOT", folder_};
};

TEST_F(SystemFacts, DriversAreTheSectionsOfTheDriverManagersFile) {
  EXPECT_TRUE(system::queryODBCDrivers().empty());
  std::ofstream(folder_ / "odbcinst.ini")
      << "# drivers\n[ODBC]\nTrace=No\n\n[PostgreSQL ANSI]\r\nDriver=/x[y].so\n [ Ünï ] \n"
         "[ODBC Drivers]\n[broken\n[]\n[MySQL]\n";
  EXPECT_EQ(joined(system::queryODBCDrivers()), "PostgreSQL ANSI;Ünï;MySQL;");
}

TEST_F(SystemFacts, RuntimesAreInTheOrderOfTheirNumbers) {
  const auto runtimes = folder_ / "shared/Microsoft.NETCore.App";
  for (const char* name :  // numbers beyond those of a runtime that the machine may have
       {"908.0.11", "908.0.2", "1000.0.0-preview.1", "906.0", "x.y.z", "908..1", "909.0.1"}) {
    std::filesystem::create_directories(runtimes / name);
  }
  std::ofstream(runtimes / "907.0.1") << "not a folder";
  const std::string versions = joined(system::queryDotNetVersions());
  EXPECT_TRUE(versions.ends_with("908.0.2;908.0.11;909.0.1;1000.0.0-preview.1;")) << versions;
  EXPECT_EQ(versions.find("90"), versions.find("908.0.2"));
}

TEST_F(SystemFacts, TheProductIsNamedByTheReleaseFile) {
  static_cast<void>(system::queryOSName());
  const auto release = readTextFile("/etc/os-release");
  if (!release) GTEST_SKIP() << "the system has no release file";
  const auto name = "\nPRETTY_NAME=\"" + toUtf8(apartment().osVersion.productName) + "\"\n";
  EXPECT_NE(("\n" + *release).find(name), std::string::npos) << name;
  EXPECT_EQ(registryText(u"Software\\Microsoft\\Windows NT", u"ProductName"), u"<Error>");
  EXPECT_EQ(registryText(u"Software\\Microsoft\\Windows 9", u"ProductName"), std::nullopt);
  EXPECT_EQ(joined(registryKeys(u"")), "SOFTWARE;");
}

TEST(HostFiles, AssignedValues) {
  const struct {
    const char* file;
    std::optional<std::string> value;
  } kCases[] = {
      {"# NAME=no\nNAME=\"two words\" # note\n", "two words"},
      {"NAME='single \\ $'\r\n", "single \\ $"},
      {R"(NAME="a \"b\" \\ \$")", "a \"b\" \\ $"},
      {"NAME=first\n\tNAME=last\tx", "last"},
      {"NAME=\"open", "open"},
      {"NAMES=x\nAN_NAME=y\nNAME", std::nullopt},
  };
  for (const auto& each : kCases) EXPECT_EQ(assignedValue(each.file, "NAME"), each.value);
}

}  // namespace
}  // namespace quendal::platform
