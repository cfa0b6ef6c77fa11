#include "platform/files.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <new>
#include <utility>

#include "base/path_text.h"
#include "base/utf8.h"
#include "platform/posix/descriptor.h"
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

// Keeps the other appenders of the file out; of a network file system also those of other machines.
class AppendLock {
 public:
  explicit AppendLock(int file) noexcept : file_(file) {
    // Others hold it for the moment of a write; one that is stopped must not stop every page.
    constexpr int kPatience = 5000;  // milliseconds
    constexpr timespec kPause{0, 1'000'000};
    for (int tries = 0; tries < kPatience; ++tries) {
      isTaken_ = ::flock(file_, LOCK_EX | LOCK_NB) != 0 && (errno == EWOULDBLOCK || errno == EINTR);
      // Where a file system has no locks, appending is one step within this machine all the same.
      if (!isTaken_) return;
      ::nanosleep(&kPause, nullptr);
    }
  }
  [[nodiscard]] bool isTaken() const noexcept { return isTaken_; }
  // Closing the file would not do: a child of this process may hold it, too, until it is a program
  // of its own.
  ~AppendLock() { ::flock(file_, LOCK_UN); }
  AppendLock(const AppendLock&) = delete;
  AppendLock& operator=(const AppendLock&) = delete;

 private:
  int file_;
  bool isTaken_ = false;
};

// One write call; it is repeated only when a signal came before any byte was written.
ssize_t writeOnce(int file, std::span<const std::byte> bytes) noexcept {
  ssize_t written;
  do {
    written = ::write(file, bytes.data(), bytes.size());
  } while (written < 0 && errno == EINTR);
  return written;
}

FileError appendOnce(int file, std::span<const std::byte> bytes, std::size_t headSize) noexcept {
  const AppendLock lock(file);
  if (lock.isTaken()) return FileError::PermissionDenied;
  const off_t end = ::lseek(file, 0, SEEK_END);
  if (end != 0) bytes = bytes.subspan(headSize);
  const ssize_t written = writeOnce(file, bytes);
  if (written == std::ssize(bytes)) return FileError::None;
  if (written < 0) return fileError(errno);
  // It has run into a limit, which the system only tells at the next write. Half an entry, perhaps
  // half a character, would spoil all that follows in the file; if this fails too, it stays.
  if (::lseek(file, 0, SEEK_END) == end + written) {
    [[maybe_unused]] const int result = ::ftruncate(file, end);
  }
  return FileError::DiskFull;
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
  if (!openFile(to.c_str(), O_WRONLY | O_CREAT | O_EXCL, kFileMode)) return errno;
  if (::rename(from.c_str(), to.c_str()) == 0) return 0;
  const int code = errno;
  ::unlink(to.c_str());
  return code;
}

struct OpenFile {
  FileError error = FileError::None;
  Descriptor file{};
  off_t size = 0;  // as the file tells it
};

OpenFile openForReading(std::u16string_view path) noexcept {
  const NativePath target(path);
  if (const FileError error = pathError(target); error != FileError::None) return {error};
  Descriptor file = openFile(target.c_str(), O_RDONLY);
  if (!file) return {fileError(errno, target)};
  struct stat status;
  if (::fstat(file.get(), &status) != 0) return {fileError(errno)};
  // A folder cannot be read so, and a device may never end.
  if (!S_ISREG(status.st_mode)) return {FileError::PermissionDenied};
  return {FileError::None, std::move(file), status.st_size};
}

struct CloseFolder {
  void operator()(DIR* folder) const noexcept { ::closedir(folder); }
};

bool isFolder(DIR* listing, const dirent& entry) noexcept {
  if (entry.d_type != DT_UNKNOWN && entry.d_type != DT_LNK) return entry.d_type == DT_DIR;
  struct stat status;
  return ::fstatat(::dirfd(listing), entry.d_name, &status, 0) == 0 && S_ISDIR(status.st_mode);
}

struct FreeMemory {
  void operator()(char* text) const noexcept { std::free(text); }
};

// Empty when the folder was removed or lies outside the process's root.
std::u16string currentFolder() {
  const std::unique_ptr<char, FreeMemory> folder(::getcwd(nullptr, 0));
  return folder != nullptr && *folder == '/' ? fromUtf8(folder.get()) : std::u16string();
}

}  // namespace

PathStatus lookAt(std::u16string_view path) noexcept {
  const NativePath target(path);
  struct stat status;
  if (target.error() != FileError::None || ::stat(target.c_str(), &status) != 0) return {};
  const bool folder = S_ISDIR(status.st_mode);
  return {true, folder, folder ? 0 : static_cast<std::int64_t>(status.st_size)};
}

bool fileExists(std::u16string_view path) noexcept {
  const PathStatus status = lookAt(withoutTrailingBlanks(path));
  return status.exists && !status.isFolder;
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

AppendFile::AppendFile(std::u16string_view path, Open how) noexcept {
  const NativePath target(path);
  error_ = pathError(target);
  if (error_ != FileError::None) return;
  const int creation = how == Open::New ? O_CREAT | O_EXCL : 0;
  Descriptor file = openFile(target.c_str(), O_WRONLY | O_APPEND | creation, kFileMode);
  if (!file) error_ = fileError(errno, target);
  native_ = file.release();
}

AppendFile::AppendFile(AppendFile&& other) noexcept
    : native_(std::exchange(other.native_, -1)), error_(other.error_) {}

AppendFile::~AppendFile() { const Descriptor file(static_cast<int>(native_)); }

FileError AppendFile::append(std::span<const std::byte> bytes, std::size_t headSize) noexcept {
  Descriptor file(static_cast<int>(std::exchange(native_, -1)));
  const FileError error = appendOnce(file.get(), bytes, headSize);
  if (error != FileError::None) return error;
  return file.close() ? FileError::None : fileError(errno);
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

FileError checkReadable(std::u16string_view path) noexcept { return openForReading(path).error; }

FileError readFile(std::u16string_view path, std::vector<std::byte>& bytes) {
  bytes.clear();
  const OpenFile source = openForReading(path);
  if (source.error != FileError::None) return source.error;
  const Descriptor& file = source.file;

  std::vector<std::byte> content;
  if (static_cast<std::uintmax_t>(source.size) >= content.max_size()) throw std::bad_alloc();
  // One byte more than is told, so that the end shows without another round; a file that grows
  // meanwhile, or tells no size, is read to its end all the same.
  content.resize(static_cast<std::size_t>(source.size) + 1);
  for (std::size_t size = 0;;) {
    const ssize_t count = ::read(file.get(), content.data() + size, content.size() - size);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return fileError(errno);
    size += static_cast<std::size_t>(count);
    if (count == 0) {
      content.resize(size);
      break;
    }
    if (size == content.size()) content.resize(std::max<std::size_t>(4096, size + size / 2));
  }
  bytes = std::move(content);
  return FileError::None;
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
