// What only Windows has: files that are not shared, its registry, its own containers.
#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>
#include <tuple>

#include "automation/dispatch.h"
#include "automation/reference.h"
#include "base/utf8.h"
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

TEST(WindowsCodePageTest, ACharacterHasAllItsBytes) {
  const std::tuple<unsigned, std::u16string_view, std::string_view> kRows[] = {
      {932, u"a\u65E5\u672C\uFF76", "a\x93\xFA\x96\x7B\xB6"},
      {1252, u"\u00E9\u20AC", "\xE9\x80"},
      {65001, u"\u00E9\u65E5\U0001F600", "\xC3\xA9\xE6\x97\xA5\xF0\x9F\x98\x80"},
  };
  for (const auto& [codePage, text, bytes] : kRows) {
    SCOPED_TRACE(codePage);
    EXPECT_EQ(toBytes(text, codePage), bytes);
    EXPECT_TRUE(fromBytes(bytes, codePage) == text);
  }
  EXPECT_EQ(toBytes(u"a\uD55Cb", 1252), "a?b");
  // No pair is cut in two in a text that is converted in pieces.
  std::u16string pairs = u"a";
  std::string inUtf8 = "a";
  while (pairs.size() < (1u << 20) + 3) {
    pairs += u"\U0001F600";
    inUtf8 += "\xF0\x9F\x98\x80";
  }
  EXPECT_TRUE(toBytes(pairs, 65001) == inUtf8);
}

TEST(WindowsRegistryTest, ReadsKeysAndValues) {
  constexpr std::u16string_view kRoot = u"Software\\QuendalScratch";
  HKEY key = nullptr;
  if (RegCreateKeyExW(HKEY_LOCAL_MACHINE, oleText((std::u16string(kRoot) + u"\\Sub\\Deep").c_str()),
                      0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr) != 0) {
    GTEST_SKIP() << "this account may not write to the registry";
  }
  RegCloseKey(key);
  const std::string longText(4999, 'x');  // more than the first buffer holds
  const std::tuple<const char*, DWORD, std::string, RegistryData> kRows[] = {
      {"a text", REG_SZ, std::string("Windows\0", 8), u"Windows"},
      {"b long", REG_SZ, longText + '\0', std::u16string(4999, u'x')},
      {"c number", REG_DWORD, "\4\3\2\1", 0x01020304},
      {"d none", REG_BINARY, "", std::vector<std::byte>()},
  };
  for (const auto& [name, type, bytes, data] : kRows) {
    EXPECT_EQ(RegSetKeyValueA(HKEY_LOCAL_MACHINE, "Software\\QuendalScratch", name, type,
                              bytes.data(), static_cast<DWORD>(bytes.size())),
              0);
  }
  const auto values = registryValues(kRoot);
  ASSERT_EQ(values.size(), std::size(kRows));
  for (std::size_t i = 0; i < values.size(); ++i) {
    EXPECT_EQ(toUtf8(values[i].name), std::get<0>(kRows[i]));
    EXPECT_TRUE(values[i].data == std::get<3>(kRows[i]));
  }
  EXPECT_EQ(registryKeys(kRoot), std::vector<std::u16string>{u"Sub"});
  EXPECT_FALSE(registryKeys(u"").empty());
  EXPECT_TRUE(registryText(kRoot, u"A TEXT") == u"Windows");
  EXPECT_TRUE(registryText(kRoot, u"b long") == u"<Error>");
  EXPECT_TRUE(registryText(kRoot, u"no such value") == u"<Error>");
  EXPECT_THROW((void)registryText(kRoot, u"d none"), std::invalid_argument);
  const std::u16string missing = std::u16string(kRoot) + u"\\Missing";
  EXPECT_EQ(registryText(missing, u"a text"), std::nullopt);
  EXPECT_TRUE(registryValues(missing).empty() && registryKeys(missing).empty());
  RegDeleteTreeW(HKEY_LOCAL_MACHINE, oleText(kRoot.data()));
}

TEST(WindowsDispatchTest, NewDictionariesAnswerByName) {
  std::thread([] {
    EXPECT_EQ(automation::newDictionary(), nullptr);
  }).join();  // a thread with no apartment
  const automation::Reference<IDispatch> dictionary(automation::newDictionary());
  ASSERT_NE(dictionary, nullptr);
  DISPID id = 0;
  EXPECT_EQ(automation::memberId(dictionary.get(), u"aDD", &id), S_OK);
  EXPECT_EQ(id, 1);
  EXPECT_EQ(automation::memberId(dictionary.get(), u"Addd", &id), DISP_E_UNKNOWNNAME);
  EXPECT_EQ(id, DISPID_UNKNOWN);
}

}  // namespace
}  // namespace quendal::platform
