#include "platform/files.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <memory>
#include <utility>

#include "base/path_text.h"
#include "base/utf8.h"
#include "platform/posix/host_files.h"
#include "platform/posix/native_path.h"

namespace quendal::platform {
namespace {

constexpr mode_t kFileMode = 0666;    // less the process's mask
constexpr mode_t kFolderMode = 0777;  // less the process's mask

// The path of a file: its error, and that of one that can only name a folder.
FileError pathError(const NativePath& path) noexcept {
  if (path.error() != FileError::None) return path.error();
  return path.endsInSeparator() ? FileError::PathNotFound : FileError::None;
}

// One write call; it is repeated only when a signal came before any byte was written.
ssize_t writeOnce(int file, std::span<const std::byte> bytes) noexcept {
  ssize_t written;
  do {
    written = ::write(file, bytes.data(), bytes.size());
  } while (written < 0 && errno == EINTR);
  return written;
}

// True when the system or the file system has no rename that never replaces.
bool lacksExclusiveRename(int code) noexcept { return code == EINVAL || code == ENOSYS; }

// Returns 0, or the error number, and never replaces a file.
//
// Without the exclusive rename the new name is reserved by an empty file, which only this process
// then replaces. A second name for the file would not do: between giving it and removing the
// first, another process may have moved the file away and created a new one.
int moveWithoutReplacing(const NativePath& from, const NativePath& to) noexcept {
  if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return 0;
  if (!lacksExclusiveRename(errno)) return errno;
  if (!openNative(to.c_str(), O_WRONLY | O_CREAT | O_EXCL, kFileMode)) return errno;
  if (::rename(from.c_str(), to.c_str()) == 0) return 0;
  const int code = errno;
  ::unlink(to.c_str());
  return code;
}

struct CloseFolder {
  void operator()(DIR* folder) const noexcept { ::closedir(folder); }
};

bool isFolder(DIR* listing, const dirent& entry) noexcept {
  if (entry.d_type != DT_UNKNOWN && entry.d_type != DT_LNK) return entry.d_type == DT_DIR;
  struct stat status;
  return ::fstatat(::dirfd(listing), entry.d_name, &status, 0) == 0 && S_ISDIR(status.st_mode);
}

// Empty when the folder was removed or lies outside the process's root.
std::u16string currentFolder() {
  const CText folder(::getcwd(nullptr, 0));
  return folder != nullptr && *folder == '/' ? fromUtf8(folder.get()) : std::u16string();
}

int descriptorOf(const OpenFile& file) noexcept { return static_cast<int>(file.native()); }

}  // namespace

FileError OpenFile::close() noexcept {
  const auto descriptor = static_cast<int>(std::exchange(native_, kNone));
  if (descriptor < 0 || ::close(descriptor) == 0 || errno == EINTR) return FileError::None;
  return fileError(errno);
}

FileError openToAppend(std::u16string_view path, bool isNew, OpenFile& file) noexcept {
  const NativePath target(path);
  if (const FileError error = pathError(target); error != FileError::None) return error;
  file =
      openNative(target.c_str(), O_WRONLY | O_APPEND | (isNew ? O_CREAT | O_EXCL : 0), kFileMode);
  return file ? FileError::None : fileError(errno, target);
}

FileError openToRead(std::u16string_view path, OpenFile& file, std::int64_t& size) noexcept {
  const NativePath target(path);
  if (const FileError error = pathError(target); error != FileError::None) return error;
  file = openNative(target.c_str(), O_RDONLY);
  if (!file) return fileError(errno, target);
  struct stat status;
  if (::fstat(descriptorOf(file), &status) != 0) return fileError(errno);
  size = status.st_size;
  return S_ISREG(status.st_mode) ? FileError::None : FileError::PermissionDenied;  // folders, too
}

FileError readSome(const OpenFile& file, std::span<std::byte> into, std::size_t& count) noexcept {
  ssize_t read;
  do {
    read = ::read(descriptorOf(file), into.data(), into.size());
  } while (read < 0 && errno == EINTR);
  count = static_cast<std::size_t>(std::max<ssize_t>(read, 0));
  return read < 0 ? fileError(errno) : FileError::None;
}

// Of a network file system it keeps also the appenders of other machines out. Where there are no
// locks, appending is one step within this machine all the same.
LockState tryLock(const OpenFile& file) noexcept {
  if (::flock(descriptorOf(file), LOCK_EX | LOCK_NB) == 0) return LockState::Held;
  return errno == EWOULDBLOCK || errno == EINTR ? LockState::Taken : LockState::None;
}

void unlock(const OpenFile& file) noexcept { ::flock(descriptorOf(file), LOCK_UN); }

std::int64_t goToEnd(const OpenFile& file) noexcept {
  return ::lseek(descriptorOf(file), 0, SEEK_END);
}

FileError appendOnce(const OpenFile& file, std::span<const std::byte> bytes, std::int64_t end,
                     LockState /*lock*/) noexcept {
  const int descriptor = descriptorOf(file);
  const ssize_t written = writeOnce(descriptor, bytes);
  if (written == std::ssize(bytes)) return FileError::None;
  if (written < 0) return fileError(errno);
  // It has run into a limit, which the system only tells at the next write. Half an entry, perhaps
  // half a character, would spoil all that follows in the file; if this fails too, it stays.
  if (goToEnd(file) == end + written) {
    [[maybe_unused]] const int result = ::ftruncate(descriptor, end);
  }
  return FileError::DiskFull;
}

PathStatus lookAt(std::u16string_view path) noexcept {
  const NativePath target(path);
  struct stat status;
  if (target.error() != FileError::None || ::stat(target.c_str(), &status) != 0) return {};
  const bool folder = S_ISDIR(status.st_mode);
  return {true, folder, folder ? 0 : static_cast<std::int64_t>(status.st_size)};
}

std::u16string absolutePath(std::u16string_view path) {
  if (NativePath(path).error() != FileError::None) return {};
  const bool rooted = isSeparator(path.front());
  const bool network = rooted && path.size() > 1 && isSeparator(path[1]);
  std::u16string whole = rooted ? std::u16string() : currentFolder();
  if (!rooted && whole.empty()) return {};
  whole.append(u"/").append(path);

  const std::size_t fixedParts = network ? 2 : 0;  // ".." never leaves the share
  std::vector<std::u16string_view> parts;
  for (std::u16string_view rest = whole; !rest.empty();) {
    const auto end = std::find_if(rest.begin(), rest.end(), isSeparator);
    const std::u16string_view part(rest.begin(), end);
    if (part == u"..") {
      if (parts.size() > fixedParts) parts.pop_back();
    } else if (!part.empty() && part != u".") {
      parts.push_back(part);
    }
    rest.remove_prefix(std::min(part.size() + 1, rest.size()));
  }

  std::u16string result = network ? u"\\\\" : u"\\";
  for (const std::u16string_view part : parts) result.append(part).append(u"\\");
  if (!parts.empty() && !endsInSeparator(path)) result.pop_back();
  return result;
}

FileError createFolder(std::u16string_view path) noexcept {
  const NativePath target(path);
  if (target.error() != FileError::None) return target.error();
  if (::mkdir(target.c_str(), kFolderMode) == 0) return FileError::None;
  const int code = errno;
  return lookAt(path).isFolder ? FileError::None : fileError(code, target);
}

FileError renameFile(std::u16string_view from, std::u16string_view to) noexcept {
  const NativePath source(from);
  const NativePath target(to);
  if (const FileError error = pathError(source); error != FileError::None) return error;
  if (const FileError error = pathError(target); error != FileError::None) return error;
  const int code = moveWithoutReplacing(source, target);
  if (code == 0) return FileError::None;
  // Either of the two may be missing. The source is not looked at, since another process may have
  // renamed it and created it anew by now.
  const FileError error = fileError(code, target);
  return error == FileError::NotFound ? fileError(code, source) : error;
}

std::vector<std::u16string> listFiles(std::u16string_view folder, FileError* error) {
  FileError ignored;
  FileError& outcome = error != nullptr ? *error : ignored;
  const NativePath target(folder);
  outcome = target.error();
  if (outcome != FileError::None) return {};
  const std::unique_ptr<DIR, CloseFolder> listing(::opendir(target.c_str()));
  if (listing == nullptr) {
    outcome = fileError(errno, target);
    return {};
  }
  std::vector<std::u16string> names;
  while (const dirent* entry = ::readdir(listing.get())) {
    if (!isFolder(listing.get(), *entry)) names.push_back(fromUtf8(entry->d_name));
  }
  std::sort(names.begin(), names.end());  // the system lists them in no order at all
  return names;
}

}  // namespace quendal::platform
