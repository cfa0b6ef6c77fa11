// What only Windows has: files that are not shared, its registry, its own containers.
#include <stdexcept>
#include <thread>

#include "automation/dispatch.h"
#include "base/utf8.h"
#include "platform/identities.h"
#include "platform/registry.h"
#include "platform/windows/code_page_bytes.h"
#include "platform/windows/wide.h"
#include "tests/platform/temp_folder.h"

namespace quendal::platform {
namespace {

TEST(WindowsFilesTest, OnlyAnExclusiveHolderKeepsAnEntryOut) {
  const TempFolder folder;
  const std::u16string log = folder / u"log";
  ASSERT_EQ(createFile(log, bytesOf("x")), FileError::None);
  const auto hold = [&log](DWORD share) {
    return FileHandle(CreateFileW(oleText(log.c_str()), GENERIC_READ | GENERIC_WRITE, share,
                                  nullptr, OPEN_EXISTING, 0, nullptr));
  };
  {
    const FileHandle reader = hold(FILE_SHARE_READ | FILE_SHARE_WRITE);
    EXPECT_EQ(appendToFile(log, bytesOf("y")), FileError::None);
    EXPECT_EQ(renameFile(log, folder / u"archive"), FileError::PermissionDenied);
  }
  std::thread shortHolder;
  {
    FileHandle exclusive = hold(0);
    ASSERT_TRUE(exclusive);
    shortHolder = std::thread([held = std::move(exclusive)] { Sleep(3); });
  }
  EXPECT_EQ(appendToFile(log, bytesOf("z")), FileError::None);
  shortHolder.join();
  EXPECT_EQ(contentOf(log), "xyz");
}

TEST(WindowsEnvironmentTest, LongVariablesAreWhole) {
  const std::string text(300, 'x');
  SetEnvironmentVariableA("QUENDAL_LONG", text.c_str());
  EXPECT_EQ(toUtf8(environmentVariable(u"QUENDAL_LONG")), text);
}

TEST(WindowsCodePageTest, ACharacterHasAllItsBytes) {
  const std::string_view bytes = "a\x93\xFA\x96\x7B\xB6";
  EXPECT_EQ(toBytes(u"a\u65E5\u672C\uFF76", 932), bytes);
  EXPECT_TRUE(fromBytes(bytes, 932) == u"a\u65E5\u672C\uFF76");
  EXPECT_EQ(toBytes(u"a\uD55Cb", 1252), "a?b");
  // No pair is cut in two in a text that is converted in pieces.
  std::u16string pairs = u"a";
  while (pairs.size() < (1u << 20) + 3) pairs += u"\U0001F600";
  EXPECT_TRUE(toBytes(pairs, 65001) == toUtf8(pairs));
}

TEST(WindowsRegistryTest, ReadsKeysAndValues) {
  constexpr std::u16string_view kRoot = u"Software\\QuendalScratch";
  const auto write = [](const char* name, DWORD type, const std::string& bytes,
                        const char* key = "Software\\QuendalScratch") {
    return RegSetKeyValueA(HKEY_LOCAL_MACHINE, key, name, type, bytes.data(),
                           static_cast<DWORD>(bytes.size()));
  };
  if (write("", REG_SZ, "", "Software\\QuendalScratch\\Sub\\Deep") != 0)
    GTEST_SKIP() << "this account may not write to the registry";
  write("a text", REG_SZ, std::string("Windows\0", 8));
  write("b long", REG_SZ, std::string(4999, 'x') + '\0');  // more than the first buffer holds
  write("c none", REG_BINARY, "");
  const auto values = registryValues(kRoot);
  ASSERT_EQ(values.size(), 3u);
  EXPECT_TRUE(values[0].name == u"a text" && values[0].data == RegistryData(u"Windows"));
  EXPECT_TRUE(values[1].data == RegistryData(std::u16string(4999, u'x')));
  EXPECT_TRUE(values[2].data == RegistryData(std::vector<std::byte>()));
  EXPECT_EQ(registryKeys(kRoot), std::vector<std::u16string>{u"Sub"});
  EXPECT_TRUE(registryText(kRoot, u"A TEXT") == u"Windows");
  EXPECT_TRUE(registryText(kRoot, u"b long") == u"<Error>");
  EXPECT_TRUE(registryText(kRoot, u"no such value") == u"<Error>");
  EXPECT_THROW((void)registryText(kRoot, u"c none"), std::invalid_argument);
  EXPECT_EQ(registryText(u"Software\\QuendalMissing", u"a text"), std::nullopt);
  RegDeleteTreeW(HKEY_LOCAL_MACHINE, oleText(kRoot.data()));
}

TEST(WindowsDispatchTest, NewDictionariesNeedAnApartment) {
  std::thread([] { EXPECT_EQ(automation::newDictionary(), nullptr); }).join();
}

}  // namespace
}  // namespace quendal::platform
