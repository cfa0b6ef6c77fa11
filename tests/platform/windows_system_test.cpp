// What only Windows has: files that are not shared, message queues, its own containers.
#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>
#include <tuple>

#include "automation/dispatch.h"
#include "automation/reference.h"
#include "platform/messages.h"
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
  {
    const FileHandle exclusive = hold(0);
    ASSERT_TRUE(exclusive);
    EXPECT_EQ(appendToFile(log, bytesOf("z")), FileError::PermissionDenied);
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
      {936, u"\u4E2D\u6587a", "\xD6\xD0\xCE\xC4\x61"},
      {949, u"\uD55C\uAD6D", "\xC7\xD1\xB1\xB9"},
      {950, u"\u4E2D\u6587", "\xA4\xA4\xA4\xE5"},
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

TEST(WindowsMessagesTest, PostedMessagesEndAWaitAndAreTakenFromTheQueue) {
  pumpMessages();
  ASSERT_TRUE(PostThreadMessageA(GetCurrentThreadId(), WM_APP, 0, 0));
  EXPECT_EQ(waitForMessage(10'000), WaitResult::Message);
  pumpMessages();
  EXPECT_EQ(waitForMessage(0), WaitResult::TimedOut);
}

TEST(WindowsRegistryTest, ReadsKeysAndValues) {
  constexpr std::u16string_view kRoot = u"Software\\QuendalScratch";
  const std::string longText(4999, 'x');  // more than the first buffer holds
  HKEY key = nullptr;
  if (RegCreateKeyExW(HKEY_LOCAL_MACHINE, oleText(kRoot.data()), 0, nullptr, 0, KEY_WRITE, nullptr,
                      &key, nullptr) != 0) {
    GTEST_SKIP() << "this account may not write to the registry";
  }
  const auto write = [key](const char* name, DWORD type, const std::string& bytes) {
    return RegSetValueExA(key, name, 0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                          static_cast<DWORD>(bytes.size()));
  };
  EXPECT_EQ(write("a text", 1, std::string("Windows\0", 8)), 0);
  EXPECT_EQ(write("b long", 1, longText + '\0'), 0);
  EXPECT_EQ(write("c number", 4, "\4\3\2\1"), 0);
  EXPECT_EQ(write("d none", 3, ""), 0);
  HKEY sub = nullptr;
  EXPECT_EQ(RegCreateKeyExA(key, "Sub\\Deep", 0, nullptr, 0, KEY_WRITE, nullptr, &sub, nullptr), 0);
  RegCloseKey(sub);
  RegCloseKey(key);

  EXPECT_EQ(registryKeys(kRoot), std::vector<std::u16string>{u"Sub"});
  EXPECT_FALSE(registryKeys(u"").empty());
  const auto values = registryValues(kRoot);
  ASSERT_EQ(values.size(), 4u);
  EXPECT_TRUE(values[0].name == u"a text" && values[0].data == RegistryData(u"Windows"));
  EXPECT_TRUE(values[1].data == RegistryData(std::u16string(4999, u'x')));
  EXPECT_TRUE(values[2].data == RegistryData(0x01020304));
  EXPECT_TRUE(values[3].data == RegistryData(std::vector<std::byte>()));
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
