// Faults of the system under the file operations, and several processes at once.
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/platform/log_race.h"
#include "tests/platform/temp_folder.h"

namespace quendal::platform {
namespace {

constexpr uid_t kNobody = 65534;

template <typename Action>
pid_t startChild(Action action) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(static_cast<int>(action()));
  return child;
}

FileError resultOf(pid_t child) {
  int status = -1;
  EXPECT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status));
  return static_cast<FileError>(WEXITSTATUS(status));
}

// The result of an action in a process of its own, whose limits and rights it may change.
template <typename Action>
FileError inChild(Action action) {
  return resultOf(startChild(action));
}

void limitFileSize(rlim_t size) {
  const rlimit limit{size, size};
  ::signal(SIGXFSZ, SIG_IGN);
  ::setrlimit(RLIMIT_FSIZE, &limit);
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
    const auto append = [&](rlim_t limit, const std::string& bytes, std::size_t headSize) {
      return inChild([&] {
        limitFileSize(limit);
        const bool ready = locks || refuseSystemCall(SYS_flock, ENOLCK);
        return ready ? appendToFile(log, bytesOf(bytes), headSize) : FileError::DeviceIo;
      });
    };
    EXPECT_EQ(inChild([&] {
                limitFileSize(1);
                return createFile(log, bytesOf("\xFF\xFE"));
              }),
              FileError::DiskFull);
    EXPECT_EQ(append(1, "\xFF\xFE", 2), FileError::DiskFull);
    EXPECT_EQ(contentOf(log), "");
    const std::string before = "\xFF\xFE" + std::string(100, 'a');
    EXPECT_EQ(append(102, before, 2), FileError::None);
    for (const rlim_t limit : {102, 110})
      EXPECT_EQ(append(limit, std::string(50, 'b'), 0), FileError::DiskFull);
    EXPECT_EQ(contentOf(log), before);
  }
}

TEST(PosixFilesTest, ADescriptorTheProcessCannotHaveIsTooManyFiles) {
  const TempFolder folder;
  ASSERT_EQ(createFile(folder / u"log", {}), FileError::None);
  using Operation = FileError (*)(const TempFolder&);
  const Operation operations[] = {
      [](const TempFolder& f) { return appendToFile(f / u"log", bytesOf("y")); },
      [](const TempFolder& f) { return createFile(f / u"new", {}); },
      [](const TempFolder& f) { return checkReadable(f / u"log"); },
  };
  for (const Operation operation : operations) {
    EXPECT_EQ(inChild([&] {
                const rlimit none{0, 0};
                ::setrlimit(RLIMIT_NOFILE, &none);
                return operation(folder);
              }),
              FileError::TooManyFiles);
  }
}

TEST(PosixFilesTest, MissingRightsAreTold) {
  const TempFolder folder;
  const std::u16string log = folder / u"log";
  ASSERT_EQ(createFile(log, bytesOf("x")), FileError::None);
  ASSERT_EQ(::chmod(folder.native().c_str(), 0555), 0);
  ASSERT_EQ(::chmod((folder.native() / "log").c_str(), 0444), 0);
  using Operation = FileError (*)(const TempFolder&);
  const Operation operations[] = {
      [](const TempFolder& f) { return appendToFile(f / u"log", bytesOf("y")); },
      [](const TempFolder& f) { return createFile(f / u"new", {}); },
      [](const TempFolder& f) { return createFolder(f / u"sub"); },
      [](const TempFolder& f) { return renameFile(f / u"log", f / u"archive"); },
  };
  for (const Operation operation : operations) {
    EXPECT_EQ(inChild([&] {
                // The rights of a folder do not bind root.
                if (::geteuid() == 0 && ::setuid(kNobody) != 0) return FileError::DeviceIo;
                return operation(folder);
              }),
              FileError::PermissionDenied);
  }
  EXPECT_EQ(contentOf(log), "x");
  ::chmod(folder.native().c_str(), 0755);
}

TEST(PosixFilesTest, PipesNeverMakeACallerWait) {
  const TempFolder folder;
  ASSERT_EQ(::mkfifo((folder.native() / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(appendToFile(folder / u"pipe", bytesOf("x")), FileError::PermissionDenied);
  std::vector<std::byte> bytes;
  EXPECT_EQ(readFile(folder / u"pipe", bytes), FileError::PermissionDenied);
}

void race(bool exclusiveRename) {
  const TempFolder folder;
  const LogRace race{folder.path(), 1200};
  constexpr std::string_view kWriters = "ABCDEFGH";
  std::vector<pid_t> children;
  for (const char writer : kWriters) {
    children.push_back(startChild([&] {
      const bool ready = exclusiveRename || refuseSystemCall(SYS_renameat2, EINVAL);
      return ready ? race.write(writer) : FileError::DeviceIo;
    }));
  }
  for (const pid_t child : children) EXPECT_EQ(resultOf(child), FileError::None);
  race.expectAll(kWriters);
}

TEST(PosixFilesTest, ProcessesThatAppendAndRollOverAtOnceLoseNothing) {
  race(true);
  race(false);
}

TEST(PosixFilesTest, RenameNeverReplacesWhereTheExclusiveOneIsMissing) {
  const TempFolder folder;
  ASSERT_EQ(createFile(folder / u"log", bytesOf("new")), FileError::None);
  ASSERT_EQ(createFile(folder / u"archive", bytesOf("old")), FileError::None);
  const auto renameTo = [&](const char16_t* from, const char16_t* to) {
    return inChild([&] {
      if (!refuseSystemCall(SYS_renameat2, EINVAL)) return FileError::DeviceIo;
      return renameFile(folder / from, folder / to);
    });
  };
  EXPECT_EQ(renameTo(u"log", u"archive"), FileError::AlreadyExists);
  EXPECT_EQ(contentOf(folder / u"archive"), "old");
  EXPECT_EQ(renameTo(u"log", u"archive2"), FileError::None);
  EXPECT_EQ(contentOf(folder / u"archive2"), "new");
}

}  // namespace
}  // namespace quendal::platform
