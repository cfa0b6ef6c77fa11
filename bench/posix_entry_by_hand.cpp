#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <ctime>

#include "bench/entry_by_hand.h"

namespace quendal::bench {
namespace {

void must(bool done) {
  if (!done) std::abort();
}

int opened(const HandLog& log) {
  const int file = ::open(log.file.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);
  must(file >= 0);
  return file;
}

void writeTo(int file, std::u16string_view entry) {
  const std::size_t size = entry.size() * sizeof(char16_t);
  must(::write(file, entry.data(), size) == static_cast<ssize_t>(size));
}

}  // namespace

void plainEntryByHand(const HandLog& log, std::u16string_view entry) {
  struct stat status;
  must(::stat(log.folder.c_str(), &status) == 0 && ::stat(log.file.c_str(), &status) == 0);
  const int file = opened(log);
  writeTo(file, entry);
  must(::close(file) == 0);
}

void wholeEntryByHand(const HandLog& log, std::u16string_view entry) {
  const int file = opened(log);
  must(::lseek(file, 0, SEEK_END) >= 0);
  timespec now{};
  must(::clock_gettime(CLOCK_REALTIME, &now) == 0 && ::clock_gettime(CLOCK_REALTIME, &now) == 0);
  tm local{};
  must(::localtime_r(&now.tv_sec, &local) != nullptr);
  char name[HOST_NAME_MAX + 1];
  must(::gethostname(name, sizeof name) == 0 && ::geteuid() != UINT_MAX && ::getpid() != 0);
  must(::flock(file, LOCK_EX | LOCK_NB) == 0 && ::lseek(file, 0, SEEK_END) >= 0);
  writeTo(file, entry);
  must(::flock(file, LOCK_UN) == 0 && ::close(file) == 0);
}

}  // namespace quendal::bench
