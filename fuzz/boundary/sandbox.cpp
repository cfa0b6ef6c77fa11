#include "boundary/sandbox.h"

#include <dirent.h>
#include <fcntl.h>
#include <netdb.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "base/utf8.h"
#include "tests/support/pe_builder.h"

namespace quendal::fuzz {
namespace {

constexpr const char* kModule = "module.dll";
constexpr int kOpensInARun = 256;

struct State {
  std::string scratch;  // with "/" at its end
  std::u16string folder;
  bool active = false;
  bool changed = false;
  int opens = 0;
  std::filesystem::path outside = std::filesystem::current_path();
};

State& state() {
  static State instance;
  return instance;
}

bool isInScratch(std::string_view path) {
  if (path.find("..") != path.npos) return false;
  // Without memory, which may be short.
  const std::string_view scratch = state().scratch;
  return !path.starts_with('/') || path.starts_with(scratch) ||
         path == scratch.substr(0, scratch.size() - 1);
}

/// The folders that the scratch folder lies in can be looked at, or nothing would be created in it.
bool isAroundScratch(std::string_view path) {
  return std::string_view(state().scratch).starts_with(path);
}

/// Whether a call may go on; else errno tells why not.
bool mayRead(const char* path) {
  if (!state().active || isInScratch(path) || isAroundScratch(path) ||
      std::string_view(path).starts_with("/etc/"))
    return true;
  errno = ENOENT;
  return false;
}
bool mayChange(const char* path) {
  if (!state().active) return true;
  if (isInScratch(path)) {
    state().changed = true;
    return true;
  }
  errno = EACCES;
  return false;
}

void writeModule() {
  const test::Bytes image =
      test::englishImage({{u"CompanyName", u"Example"}, {u"ProductVersion", u"1.2.3.4"}});
  std::ofstream(state().scratch + kModule, std::ios::binary)
      .write(reinterpret_cast<const char*>(image.data()),
             static_cast<std::streamsize>(image.size()));
}

}  // namespace

Sandbox::Sandbox() {
  const char* const folder = std::getenv("TMPDIR");
  std::string name = std::string(folder != nullptr ? folder : "/tmp") + "/quendal-fuzz-XXXXXX";
  if (::mkdtemp(name.data()) == nullptr) std::abort();
  state().scratch = name + "/";
  state().folder = fromUtf8(state().scratch);
  // Nothing of what the user's own surroundings say is wanted.
  for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"})
    ::setenv(variable, name.c_str(), 1);
  ::setenv("TMPDIR", (state().scratch + "tmp").c_str(), 1);
  writeModule();
}

Sandbox::~Sandbox() {
  std::error_code ignored;
  std::filesystem::remove_all(state().scratch, ignored);
}

const std::u16string& Sandbox::folder() { return state().folder; }

void Sandbox::enter() {
  std::filesystem::current_path(state().scratch);
  state().active = true;
  state().opens = 0;
}

void Sandbox::leave() {
  state().active = false;
  std::filesystem::current_path(state().outside);
  if (!std::exchange(state().changed, false)) return;
  std::error_code ignored;
  for (const auto& entry : std::filesystem::directory_iterator(state().scratch, ignored))
    if (entry.path().filename() != kModule) std::filesystem::remove_all(entry.path(), ignored);
  if (!std::filesystem::exists(state().scratch + kModule)) writeModule();
}

}  // namespace quendal::fuzz

using namespace quendal::fuzz;

// The linker gives the library's calls these in place of the system's.
extern "C" {

int __real_open(const char* path, int flags, ...);
int __real_stat(const char* path, struct stat* status);
int __real_mkdir(const char* path, mode_t mode);
int __real_unlink(const char* path);
int __real_rename(const char* from, const char* to);
int __real_renameat2(int fromFolder, const char* from, int toFolder, const char* to,
                     unsigned flags);
DIR* __real_opendir(const char* path);
int __real_clock_nanosleep(clockid_t clock, int flags, const timespec* time, timespec* left);
int __real_getaddrinfo(const char* host, const char* service, const addrinfo* hints,
                       addrinfo** list);
void __real_syslog(int priority, const char* format, ...);

int __wrap_open(const char* path, int flags, ...) {
  std::va_list rest;
  va_start(rest, flags);
  const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(rest, mode_t) : 0;
  va_end(rest);
  const bool may = (flags & O_ACCMODE) == O_RDONLY ? mayRead(path) : mayChange(path);
  if (!may) return -1;
  // An entry that is written thousands of times shows nothing more than one written often.
  if (state().active && ++state().opens > kOpensInARun) {
    errno = EMFILE;
    return -1;
  }
  return __real_open(path, flags, mode);
}
int __wrap_stat(const char* path, struct stat* status) {
  return mayRead(path) ? __real_stat(path, status) : -1;
}
int __wrap_mkdir(const char* path, mode_t mode) {
  return mayChange(path) ? __real_mkdir(path, mode) : -1;
}
int __wrap_unlink(const char* path) { return mayChange(path) ? __real_unlink(path) : -1; }
int __wrap_rename(const char* from, const char* to) {
  return mayChange(from) && mayChange(to) ? __real_rename(from, to) : -1;
}
int __wrap_renameat2(int fromFolder, const char* from, int toFolder, const char* to,
                     unsigned flags) {
  const bool may = mayChange(from) && mayChange(to);
  return may ? __real_renameat2(fromFolder, from, toFolder, to, flags) : -1;
}
DIR* __wrap_opendir(const char* path) { return mayRead(path) ? __real_opendir(path) : nullptr; }

int __wrap_clock_nanosleep(clockid_t clock, int flags, const timespec* time, timespec* left) {
  return state().active ? 0 : __real_clock_nanosleep(clock, flags, time, left);
}
int __wrap_getaddrinfo(const char* host, const char* service, const addrinfo* hints,
                       addrinfo** list) {
  return __real_getaddrinfo(state().active ? "127.0.0.1" : host, service, hints, list);
}
void __wrap_syslog(int, const char*, ...) {}

}  // extern "C"
