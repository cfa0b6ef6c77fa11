// What only Windows has: files that are not shared, message queues, its own containers.
#include <gtest/gtest.h>

#include <thread>

#include "platform/dispatch.h"
#include "platform/messages.h"
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

TEST(WindowsMessagesTest, PostedMessagesEndAWaitAndAreTakenFromTheQueue) {
  pumpMessages();
  ASSERT_TRUE(PostThreadMessageA(GetCurrentThreadId(), WM_APP, 0, 0));
  EXPECT_EQ(waitForMessage(10'000), WaitResult::Message);
  pumpMessages();
  EXPECT_EQ(waitForMessage(0), WaitResult::TimedOut);
}

TEST(WindowsDispatchTest, NewDictionariesAnswerByName) {
  std::thread([] { EXPECT_EQ(newDictionary(), nullptr); }).join();  // a thread with no apartment
  const Reference<IDispatch> dictionary(newDictionary());
  ASSERT_NE(dictionary, nullptr);
  DISPID id = 0;
  EXPECT_EQ(memberId(dictionary.get(), u"aDD", &id), S_OK);
  EXPECT_EQ(id, 1);
  EXPECT_EQ(memberId(dictionary.get(), u"Addd", &id), DISP_E_UNKNOWNNAME);
  EXPECT_EQ(id, DISPID_UNKNOWN);
}

}  // namespace
}  // namespace quendal::platform
