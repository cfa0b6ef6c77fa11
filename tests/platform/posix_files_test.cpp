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
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <thread>

#include "tests/platform/temp_folder.h"

namespace quendal::platform {
namespace {

// The result of an action in a process of its own, whose limits and rights it may change.
template <typename Action>
FileError inChild(Action action) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(static_cast<int>(action()));
  int status = -1;
  EXPECT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status));
  return static_cast<FileError>(WEXITSTATUS(status));
}

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
    const auto append = [&](rlim_t size, const std::string& bytes, std::size_t headSize) {
      return inChild([&] {
        limit(RLIMIT_FSIZE, size);
        const bool ready = locks || refuseSystemCall(SYS_flock, ENOLCK);
        return ready ? appendToFile(log, bytesOf(bytes), headSize) : FileError::DeviceIo;
      });
    };
    const FileError created = inChild([&] {
      limit(RLIMIT_FSIZE, 1);
      return createFile(log, bytesOf("\xFF\xFE"));
    });
    EXPECT_EQ(created, FileError::DiskFull);
    EXPECT_EQ(append(1, "\xFF\xFE", 2), FileError::DiskFull);
    EXPECT_EQ(contentOf(log), "");
    const std::string before = "\xFF\xFE" + std::string(100, 'a');
    EXPECT_EQ(append(102, before, 2), FileError::None);
    for (const rlim_t size : {102, 110})
      EXPECT_EQ(append(size, std::string(50, 'b'), 0), FileError::DiskFull);
    EXPECT_EQ(contentOf(log), before);
  }
}

TEST(PosixFilesTest, MissingRightsAndDescriptorsAreTold) {
  constexpr uid_t kNobody = 65534;
  const TempFolder folder;
  ASSERT_EQ(createFile(folder / u"log", bytesOf("x")), FileError::None);
  ASSERT_EQ(::chmod(folder.native().c_str(), 0555), 0);
  ASSERT_EQ(::chmod((folder.native() / "log").c_str(), 0444), 0);
  using enum FileError;
  const struct {
    FileError (*operation)(const TempFolder&);
    FileError withoutRights, withoutDescriptors;
  } rows[] = {
      {[](const TempFolder& f) { return appendToFile(f / u"log", bytesOf("y")); }, PermissionDenied,
       TooManyFiles},
      {[](const TempFolder& f) { return createFile(f / u"new", {}); }, PermissionDenied,
       TooManyFiles},
      {[](const TempFolder& f) { return checkReadable(f / u"log"); }, None, TooManyFiles},
      {[](const TempFolder& f) { return createFolder(f / u"sub"); }, PermissionDenied, None},
      {[](const TempFolder& f) { return renameFile(f / u"log", f / u"old"); }, PermissionDenied,
       None},
  };
  for (const auto& row : rows) {
    const FileError withoutRights = inChild([&] {
      // The rights of a folder do not bind root.
      if (::geteuid() == 0 && ::setuid(kNobody) != 0) return DeviceIo;
      return row.operation(folder);
    });
    EXPECT_EQ(withoutRights, row.withoutRights);
    if (row.withoutDescriptors == None) continue;  // needs none
    const FileError withoutDescriptors = inChild([&] {
      limit(RLIMIT_NOFILE, 0);
      return row.operation(folder);
    });
    EXPECT_EQ(withoutDescriptors, row.withoutDescriptors);
  }
  EXPECT_EQ(contentOf(folder / u"log"), "x");
  ::chmod(folder.native().c_str(), 0755);
}

TEST(PosixFilesTest, PipesNeverMakeACallerWait) {
  const TempFolder folder;
  ASSERT_EQ(::mkfifo((folder.native() / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(appendToFile(folder / u"pipe", bytesOf("x")), FileError::PermissionDenied);
  std::vector<std::byte> bytes;
  EXPECT_EQ(readFile(folder / u"pipe", bytes), FileError::PermissionDenied);
}

TEST(PosixFilesTest, RenameNeverReplacesWhereTheExclusiveOneIsMissing) {
  const TempFolder folder;
  ASSERT_EQ(createFile(folder / u"log", bytesOf("new")), FileError::None);
  ASSERT_EQ(createFile(folder / u"archive", bytesOf("old")), FileError::None);
  const auto rename = [&](const char16_t* from, const char16_t* to) {
    return inChild([&] {
      if (!refuseSystemCall(SYS_renameat2, EINVAL)) return FileError::DeviceIo;
      return renameFile(folder / from, folder / to);
    });
  };
  EXPECT_EQ(rename(u"log", u"archive"), FileError::AlreadyExists);
  EXPECT_EQ(rename(u"none", u"archive2"), FileError::NotFound);
  EXPECT_EQ(contentOf(folder / u"archive"), "old");
  EXPECT_FALSE(lookAt(folder / u"archive2").exists);
  EXPECT_EQ(rename(u"log", u"archive2"), FileError::None);
  EXPECT_EQ(contentOf(folder / u"archive2"), "new");
}

TEST(PosixFilesTest, AnAppendWaitsForAnother) {
  const TempFolder folder;
  ASSERT_EQ(createFile(folder / u"log", {}), FileError::None);
  const int holder = ::open((folder.native() / "log").c_str(), O_WRONLY);
  ASSERT_EQ(::flock(holder, LOCK_EX), 0);
  std::thread other([holder] {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_EQ(::write(holder, "x", 1), 1);
    ::flock(holder, LOCK_UN);
  });
  EXPECT_EQ(appendToFile(folder / u"log", bytesOf("headz"), 4), FileError::None);
  other.join();
  EXPECT_EQ(contentOf(folder / u"log"), "xz");
  ASSERT_EQ(::flock(holder, LOCK_EX | LOCK_NB), 0);  // nobody else has it any more
  ::close(holder);
}

}  // namespace
}  // namespace quendal::platform
