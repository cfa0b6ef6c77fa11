// Faults of the system under the file operations.
#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include <chrono>
#include <thread>

#include "tests/platform/posix_environment.h"
#include "tests/platform/temp_folder.h"

namespace quendal::platform {
namespace {

using enum FileError;

void limit(int resource, rlim_t size) {
  const rlimit both{size, size};
  ::signal(SIGXFSZ, SIG_IGN);
  ::setrlimit(static_cast<__rlimit_resource>(resource), &both);
}

// From now on the system call fails in this process, as on a system that lacks it.
bool refuseSystemCall(unsigned number, unsigned error) {
  sock_filter code[] = {
      {BPF_LD | BPF_W | BPF_ABS, 0, 0, offsetof(seccomp_data, nr)},
      {BPF_JMP | BPF_JEQ | BPF_K, 0, 1, number},
      {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ERRNO | error},
      {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW},
  };
  const sock_fprog program{4, code};
  return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
         ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

TEST(PosixFilesTest, AFullDiskLeavesNoHalfEntry) {
  for (const bool locks : {true, false}) {
    const TempFolder folder;
    const std::u16string log = folder / u"log";
    ASSERT_EQ(createFile(log, {}), None);
    const auto append = [&](rlim_t size, const std::string& bytes, std::size_t headSize) {
      return inChild([&] {
        limit(RLIMIT_FSIZE, size);
        const bool ready = locks || refuseSystemCall(SYS_flock, ENOLCK);
        return ready ? appendToFile(log, bytesOf(bytes), headSize) : DeviceIo;
      });
    };
    EXPECT_EQ(append(1, "\xFF\xFE", 2), DiskFull);
    EXPECT_EQ(contentOf(log), "");
    const std::string before = "\xFF\xFE" + std::string(100, 'a');
    EXPECT_EQ(append(102, before, 2), None);
    for (const rlim_t size : {102, 110}) EXPECT_EQ(append(size, std::string(50, 'b'), 0), DiskFull);
    EXPECT_EQ(contentOf(log), before);
  }
}

TEST(PosixFilesTest, WhatCannotBeOpenedIsToldAtOnce) {
  const TempFolder folder;
  const std::u16string log = folder / u"log";
  ASSERT_EQ(createFile(log, bytesOf("x")), None);
  ASSERT_EQ(::chmod((folder.native() / "log").c_str(), 0444), 0);
  const auto withoutRights = [](auto operation) {
    return inChild([&] { return becomeNobody() ? operation() : DeviceIo; });
  };
  const auto withoutDescriptors = [](auto operation) {
    return inChild([&] { return limit(RLIMIT_NOFILE, 0), operation(); });
  };
  const auto append = [&] { return appendToFile(log, bytesOf("y")); };
  const auto check = [&] { return checkReadable(log); };
  EXPECT_EQ(withoutRights(append), PermissionDenied);
  EXPECT_EQ(withoutRights(check), None);
  EXPECT_EQ(withoutDescriptors(append), TooManyFiles);
  EXPECT_EQ(withoutDescriptors(check), TooManyFiles);
  EXPECT_EQ(contentOf(log), "x");
  ASSERT_EQ(::mkfifo((folder.native() / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(appendToFile(folder / u"pipe", bytesOf("x")), PermissionDenied);
  EXPECT_EQ(checkReadable(folder / u"pipe"), PermissionDenied);
  EXPECT_EQ(appendToFile(u"\\none in the root", bytesOf("x")), NotFound);
  std::filesystem::create_directory_symlink(folder.native(), folder.native() / "link");
  EXPECT_EQ(std::ranges::count(listFiles(folder.path()), u"link"), 0);
}

TEST(PosixFilesTest, RenameNeverReplacesWhereTheExclusiveOneIsMissing) {
  const TempFolder folder;
  ASSERT_EQ(createFile(folder / u"log", bytesOf("new")), None);
  const auto rename = [&](const char16_t* from, const char16_t* to) {
    return inChild([&] {
      if (!refuseSystemCall(SYS_renameat2, EINVAL)) return DeviceIo;
      return renameFile(folder / from, folder / to);
    });
  };
  EXPECT_EQ(rename(u"none", u"archive"), NotFound);
  EXPECT_FALSE(lookAt(folder / u"archive").exists);
  EXPECT_EQ(rename(u"log", u"archive"), None);
  ASSERT_EQ(createFile(folder / u"log", {}), None);
  EXPECT_EQ(rename(u"log", u"archive"), AlreadyExists);
  EXPECT_EQ(contentOf(folder / u"archive"), "new");
}

TEST(PosixFilesTest, AnAppendWaitsForAnother) {
  const TempFolder folder;
  ASSERT_EQ(createFile(folder / u"log", {}), None);
  const int holder = ::open((folder.native() / "log").c_str(), O_WRONLY);
  ASSERT_EQ(::flock(holder, LOCK_EX), 0);
  std::thread other([holder] {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_EQ(::write(holder, "x", 1), 1);
    ::flock(holder, LOCK_UN);
  });
  EXPECT_EQ(appendToFile(folder / u"log", bytesOf("headz"), 4), None);
  other.join();
  EXPECT_EQ(contentOf(folder / u"log"), "xz");
  ASSERT_EQ(::flock(holder, LOCK_EX | LOCK_NB), 0);  // nobody else has it any more
  ::close(holder);
}

}  // namespace
}  // namespace quendal::platform
