// The composed registry's sources: an exported file, and what the system knows.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "base/utf8.h"
#include "platform/posix/host_files.h"
#include "platform/posix/registry_file.h"
#include "platform/posix/registry_query.h"
#include "platform/registry.h"
#include "tests/platform/temp_folder.h"

namespace quendal::platform {
namespace {

// The values of [Key] as "name:type=bytes" with printable bytes as they are and others as <n>.
std::string valuesOf(std::string_view file, std::u16string_view key = u"Key") {
  RegistryQuery query(key);
  readRegistryFile(file, query);
  std::string out;
  for (const StoredValue& value : query.values()) {
    out += toUtf8(value.name) + ":" + std::to_string(value.type) + "=";
    for (const char byte : value.bytes) {
      const auto number = static_cast<unsigned char>(byte);
      out += number >= 0x20 && number < 0x7F ? std::string(1, byte)
                                             : "<" + std::to_string(number) + ">";
    }
    out += ";";
  }
  return out;
}

TEST(RegistryFile, ReadsValues) {
  const struct {
    const char* lines;
    const char* values;
  } kCases[] = {
      {"  \"a\" = \"b\"  ; note", "a:1=b<0>;"},
      {"@=\"nameless\"", ":1=nameless<0>;"},
      {R"("a\\b\"c"="C:\\x\"y")", "a\\b\"c:1=C:\\x\"y<0>;"},
      {"\"n\"=dword:FFFFFFFE", "n:4=<254><255><255><255>;"},
      {"\"h\"=hex:01,\\\r\n  02,\\\r\n  03\r\n\"i\"=\"x\"", "h:3=<1><2><3>;i:1=x<0>;"},
      {"\"m\"=hex(7):61,00,00,00,ac,20,00,00,00,00", "m:7=a<0><128><0><0>;"},
      {"\"e\"=hex(1):", "e:1=;"},
      {"\"a\"=\"1\"\n\"b\"=\"2\"\n\"A\"=\"3\"", "A:1=3<0>;b:1=2<0>;"},
      {"\"a\"=\"1\"\n[Other]\n\"a\"=\"2\"\n[KEY]\n\"b\"=\"3\"", "a:1=1<0>;b:1=3<0>;"},
      {"[HKEY_LOCAL_MACHINE\\Key]\n\"a\"=\"1\"", "a:1=1<0>;"},
  };
  for (const auto& each : kCases)
    EXPECT_EQ(valuesOf("[Key]\n" + std::string(each.lines)), each.values) << each.lines;
}

TEST(RegistryFile, PassesOverWhatIsMalformed) {
  std::string_view rest =
      R"("a|"a"|"a"=|"a"="b|"a"=b|"a"=-|"a\|a="b"|@|@=|"n"=dword:|"n"=dword:xyz|"n"=dword:1 2|)"
      R"("n"=dword:123456789|"h"=hex|"h"=hex:1g|"h"=hex:100|"h"=hex:-1|"h"=hex(:01|"h"=hex():01|)"
      R"("h"=hex(zz):01|"h"=hex(3)01|"h"=hex:,|"h"=hex:01,,\|; "a"="b"|[)"
      "|[-Key]\n\"a\"=\"b\"|[Key\n\"a\"=\"b\"|[]\n\"a\"=\"b\"";
  while (!rest.empty()) {
    const std::string lines(rest.substr(0, rest.find('|')));
    rest.remove_prefix(std::min(lines.size() + 1, rest.size()));
    EXPECT_EQ(valuesOf("[Key]\n" + lines), "") << lines;
    EXPECT_EQ(valuesOf("[Key]\n" + lines + "\n[Key]\n\"z\"=\"1\""), "z:1=1<0>;") << lines;
  }
  EXPECT_EQ(valuesOf("\"a\"=\"before any key\"\n[Key]"), "");
}

TEST(RegistryFile, EncodingsAndHeaders) {
  const std::string plain = "[Key]\r\n\"a\"=\"\xC3\xA9\"\r\n";
  std::string wide = "\xFF\xFE";
  for (const char16_t unit : fromUtf8(plain)) {
    wide += static_cast<char>(unit & 0xFF);
    wide += static_cast<char>(unit >> 8);
  }
  for (const std::string& file :
       {plain, "\xEF\xBB\xBF" + plain, "Windows Registry Editor Version 5.00\r\n\r\n" + plain, wide,
        wide + "x"}) {
    EXPECT_EQ(valuesOf(file), "a:1=<233><0>;");
  }
  EXPECT_EQ(valuesOf("REGEDIT4\n[Key]\n\"a\"=hex(2):61,62,00"), "a:2=ab<0>;");
}

TEST(RegistryFile, ManyKeysStayQuick) {
  std::string file;
  for (int i = 0; i < 100000; ++i) file += "[Key\\" + std::to_string(i) + "\\x]\n";
  file += "[Key" + std::string(100000, '\\') + "deep]\n";
  RegistryQuery query(u"key");
  readRegistryFile(file, query);
  EXPECT_EQ(query.keys().size(), 100000u);
}

class ComposedRegistry : public testing::Test {
 protected:
  ComposedRegistry() {
    unsetenv("QUENDAL_REGISTRY");
    setenv("ODBCSYSINI", folder_.c_str(), 1);
    setenv("DOTNET_ROOT", folder_.c_str(), 1);
  }
  ~ComposedRegistry() override {
    for (const char* name : {"QUENDAL_REGISTRY", "ODBCSYSINI", "DOTNET_ROOT"}) unsetenv(name);
  }
  const TempFolder owner_;
  const std::filesystem::path folder_ = owner_.native();
};

TEST_F(ComposedRegistry, DriversOfTheDriverManager) {
  constexpr std::u16string_view kKey = u"Software\\ODBC\\ODBCINST.INI\\ODBC Drivers";
  EXPECT_TRUE(registryValues(kKey).empty());
  std::ofstream(folder_ / "odbcinst.ini") << "# drivers\n[ODBC]\nTrace=No\n\n[PostgreSQL ANSI]\r\n"
                                             "Driver=/x[y].so\n [ Ünï ] \n[broken\n[]\n[MySQL]\n";
  const auto values = registryValues(kKey);
  std::string names;
  for (const RegistryValue& each : values) {
    names += toUtf8(each.name) + ";";
    EXPECT_EQ(each.data, RegistryData(std::u16string(u"Installed")));
  }
  EXPECT_EQ(names, "PostgreSQL ANSI;Ünï;MySQL;");
}

TEST_F(ComposedRegistry, RuntimesByVersion) {
  const auto runtimes = folder_ / "shared/Microsoft.NETCore.App";
  for (const char* name :  // numbers beyond those of a runtime that the machine may have
       {"908.0.11", "908.0.2", "1000.0.0-preview.1", "906.0", "x.y.z", "908..1", "909.0.1"}) {
    std::filesystem::create_directories(runtimes / name);
  }
  std::ofstream(runtimes / "907.0.1") << "not a folder";
  constexpr std::u16string_view kPolicy = u"SOFTWARE\\Microsoft\\.NETFramework\\Policy";
  std::string all;
  for (const auto& key : registryKeys(kPolicy)) {
    all += toUtf8(key) + ":";
    for (const auto& value : registryValues(std::u16string(kPolicy) + u"\\" + key))
      all += " " + toUtf8(value.name);
    all += ";";
  }
  EXPECT_TRUE(all.ends_with("v908.0: 2 11;v909.0: 1;v1000.0: 0-preview.1;")) << all;
  EXPECT_EQ(all.find("v906"), std::string::npos);
}

TEST_F(ComposedRegistry, ANamedFileReplacesEverything) {
  constexpr std::u16string_view kKey = u"Software\\Microsoft\\Windows NT\\CurrentVersion";
  const auto file = folder_ / "machine.reg";
  std::ofstream(file) << "[" << toUtf8(kKey) << "]\n\"ProductName\"=\"Test Server\"\n";
  setenv("QUENDAL_REGISTRY", file.c_str(), 1);
  EXPECT_EQ(registryText(kKey, u"productname"), u"Test Server");
  for (const char* other : {"/no/such/file", "/dev/zero", folder_.c_str()}) {
    setenv("QUENDAL_REGISTRY", other, 1);
    EXPECT_EQ(registryText(kKey, u"ProductName"), std::nullopt) << other;
  }
}

TEST(HostFiles, AssignedValues) {
  const struct {
    const char* file;
    std::optional<std::string> value;
  } kCases[] = {
      {"# NAME=no\nNAME=\"two words\" # note\n", "two words"},
      {"NAME='single \\ $'\r\n", "single \\ $"},
      {R"(NAME="a \"b\" \\ \$")", "a \"b\" \\ $"},
      {"NAME=\"open", "open"},
      {"NAMES=x\nAN_NAME=y\nNAME", std::nullopt},
  };
  for (const auto& each : kCases) EXPECT_EQ(assignedValue(each.file, "NAME"), each.value);
}

}  // namespace
}  // namespace quendal::platform
