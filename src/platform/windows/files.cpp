#include "platform/files.h"

#include <algorithm>
#include <array>
#include <limits>
#include <new>
#include <utility>

#include "base/path_text.h"
#include "platform/windows/wide.h"

namespace quendal::platform {
namespace {

constexpr std::size_t kPathCapacity = 4096;
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr int kOpenTries = 10;
constexpr DWORD kDiskQuotaExceeded = 1295;  // not in every header

class Path {
 public:
  explicit Path(std::u16string_view path) noexcept
      : text_(path), usable_(isPath(path) && text_.fits() && !hasLongPart(path)) {}

  /// None, or why there is no such path.
  [[nodiscard]] FileError error() const noexcept {
    return usable_ ? FileError::None : FileError::BadFileName;
  }
  [[nodiscard]] const wchar_t* c_str() const noexcept { return text_.c_str(); }

 private:
  WideText<kPathCapacity> text_;
  bool usable_;
};

// The path of a file: its error, and that of one that can only name a folder.
FileError pathError(std::u16string_view path, const Path& target) noexcept {
  if (target.error() != FileError::None) return target.error();
  return endsInSeparator(path) ? FileError::PathNotFound : FileError::None;
}

FileError fileError(DWORD code) noexcept {
  switch (code) {
    case ERROR_FILE_NOT_FOUND:
      return FileError::NotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_DIRECTORY:
      return FileError::PathNotFound;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
      return FileError::AlreadyExists;
    case ERROR_ACCESS_DENIED:
    case ERROR_NETWORK_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_USER_MAPPED_FILE:
    case ERROR_DELETE_PENDING:
      return FileError::PermissionDenied;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
    case kDiskQuotaExceeded:
    case ERROR_FILE_TOO_LARGE:
      return FileError::DiskFull;
    case ERROR_TOO_MANY_OPEN_FILES:
      return FileError::TooManyFiles;
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_FILENAME_EXCED_RANGE:
      return FileError::BadFileName;
    case ERROR_NOT_SAME_DEVICE:
      return FileError::PathFileAccess;
    default:
      return FileError::DeviceIo;
  }
}

FileError lastError() noexcept { return fileError(GetLastError()); }

// Holds a byte far behind every content, where it keeps no reader out. Others hold it for the
// moment of a write; one that is frozen, or a machine that is gone, must not stop every page.
class AppendLock {
 public:
  explicit AppendLock(HANDLE file) noexcept : file_(file) {
    constexpr DWORD kFlags = LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY;
    constexpr ULONGLONG kPatience = 5000;  // milliseconds
    const ULONGLONG start = GetTickCount64();
    while (!(held_ = LockFileEx(file_, kFlags, 0, 1, 0, &place_) != 0)) {
      const DWORD code = GetLastError();
      isTaken_ = code == ERROR_LOCK_VIOLATION || code == ERROR_IO_PENDING;
      if (!isTaken_ || GetTickCount64() - start > kPatience) return;
      Sleep(1);
    }
  }
  ~AppendLock() {
    if (held_) UnlockFileEx(file_, 0, 1, 0, &place_);
  }
  AppendLock(const AppendLock&) = delete;
  AppendLock& operator=(const AppendLock&) = delete;

  [[nodiscard]] bool isHeld() const noexcept { return held_; }
  /// Somebody else has it still; otherwise, unless it is held, the file system has no locks.
  [[nodiscard]] bool isTaken() const noexcept { return !held_ && isTaken_; }

 private:
  static OVERLAPPED farBehind() noexcept {
    OVERLAPPED place{};
    place.OffsetHigh = std::numeric_limits<LONG>::max();
    return place;
  }

  OVERLAPPED place_ = farBehind();
  HANDLE file_;
  bool held_ = false;
  bool isTaken_ = false;
};

// Half an entry, perhaps half a character, would spoil all that follows in the file.
void cutOff(HANDLE file, LARGE_INTEGER end) noexcept {
  if (SetFilePointerEx(file, end, nullptr, FILE_BEGIN)) SetEndOfFile(file);
}

FileError appendOnce(HANDLE file, std::span<const std::byte> bytes, std::size_t headSize) noexcept {
  const AppendLock lock(file);
  if (lock.isTaken()) return FileError::PermissionDenied;
  LARGE_INTEGER end;
  if (!GetFileSizeEx(file, &end)) return lastError();
  if (end.QuadPart > 0) bytes = bytes.subspan(headSize);
  if (bytes.size() > std::numeric_limits<DWORD>::max()) return FileError::DiskFull;
  // Without the lock the end is left to the system, which finds it and writes in one step.
  OVERLAPPED place{};
  place.Offset = lock.isHeld() ? end.LowPart : std::numeric_limits<DWORD>::max();
  place.OffsetHigh =
      lock.isHeld() ? static_cast<DWORD>(end.HighPart) : std::numeric_limits<DWORD>::max();
  DWORD written = 0;
  FileError error = FileError::DiskFull;  // of a write that ends early
  if (!WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, &place))
    error = lastError();  // perhaps of a later piece of it
  else if (written == bytes.size())
    return FileError::None;
  if (lock.isHeld()) cutOff(file, end);
  return error;
}

// Scanners of the system hold a new file for a moment; an entry need not be lost for that.
FileHandle openForAppending(const Path& path, DWORD disposition) noexcept {
  for (int tries = kOpenTries;; --tries) {
    FileHandle file(CreateFileW(path.c_str(), FILE_WRITE_DATA, kShareAll, nullptr, disposition,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
    if (file || tries == 1 || GetLastError() != ERROR_SHARING_VIOLATION) return file;
    Sleep(1);
  }
}

struct OpenFile {
  FileError error = FileError::None;
  FileHandle file{nullptr};
  LONGLONG size = 0;  // as the file tells it
};

OpenFile openForReading(std::u16string_view path) noexcept {
  const Path target(path);
  if (const FileError error = pathError(path, target); error != FileError::None) return {error};
  FileHandle file(CreateFileW(target.c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING,
                              FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
  if (!file) return {lastError()};
  // A device may never end.
  if (GetFileType(file.get()) != FILE_TYPE_DISK) return {FileError::PermissionDenied};
  LARGE_INTEGER told;
  if (!GetFileSizeEx(file.get(), &told)) return {lastError()};
  return {FileError::None, std::move(file), told.QuadPart};
}

bool isFolderAttribute(DWORD attributes) noexcept {
  return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

std::int64_t join(DWORD high, DWORD low) noexcept {
  return static_cast<std::int64_t>(std::uint64_t{high} << 32 | low);
}

}  // namespace

PathStatus lookAt(std::u16string_view path) noexcept {
  const Path target(path);
  WIN32_FILE_ATTRIBUTE_DATA data;
  if (target.error() != FileError::None ||
      !GetFileAttributesExW(target.c_str(), GetFileExInfoStandard, &data)) {
    return {};
  }
  const bool folder = isFolderAttribute(data.dwFileAttributes);
  return {true, folder, folder ? 0 : join(data.nFileSizeHigh, data.nFileSizeLow)};
}

bool fileExists(std::u16string_view path) noexcept {
  const PathStatus status = lookAt(withoutTrailingBlanks(path));
  return status.exists && !status.isFolder;
}

std::u16string absolutePath(std::u16string_view path) {
  const Path relative(path);
  if (relative.error() != FileError::None) return {};
  std::u16string result(MAX_PATH, u'\0');
  for (;;) {
    // The size that is needed, or that of the result when it fits; the current folder may change
    // in between.
    const DWORD size = GetFullPathNameW(relative.c_str(), static_cast<DWORD>(result.size()),
                                        wideBuffer(result.data()), nullptr);
    const bool complete = size < result.size();
    result.resize(size);
    if (complete) return result;
  }
}

FileError createFolder(std::u16string_view path) noexcept {
  const Path target(path);
  if (target.error() != FileError::None) return target.error();
  if (CreateDirectoryW(target.c_str(), nullptr)) return FileError::None;
  const FileError error = lastError();
  const PathStatus status = lookAt(path);
  // One that may not be looked at is there; what comes below it tells more.
  const bool isThere = status.isFolder || (error == FileError::AlreadyExists && !status.exists);
  return isThere ? FileError::None : error;
}

AppendFile::AppendFile(std::u16string_view path, Open how) noexcept {
  const Path target(path);
  error_ = pathError(path, target);
  if (error_ != FileError::None) return;
  FileHandle file = openForAppending(target, how == Open::New ? CREATE_NEW : OPEN_EXISTING);
  if (file) {
    native_ = reinterpret_cast<std::intptr_t>(file.release());
  } else {
    error_ = lastError();
  }
}

AppendFile::AppendFile(AppendFile&& other) noexcept
    : native_(std::exchange(other.native_, -1)), error_(other.error_) {}

AppendFile::~AppendFile() { const FileHandle file(reinterpret_cast<HANDLE>(native_)); }

FileError AppendFile::append(std::span<const std::byte> bytes, std::size_t headSize) noexcept {
  const FileHandle file(reinterpret_cast<HANDLE>(std::exchange(native_, -1)));
  return appendOnce(file.get(), bytes, headSize);
}

FileError renameFile(std::u16string_view from, std::u16string_view to) noexcept {
  const Path source(from);
  const Path target(to);
  if (const FileError error = pathError(from, source); error != FileError::None) return error;
  if (const FileError error = pathError(to, target); error != FileError::None) return error;
  for (int tries = kOpenTries;; --tries) {
    if (MoveFileExW(source.c_str(), target.c_str(), 0)) return FileError::None;
    const DWORD code = GetLastError();
    if (tries == 1 || code != ERROR_SHARING_VIOLATION) return fileError(code);
    Sleep(1);  // as in openForAppending
  }
}

FileError checkReadable(std::u16string_view path) noexcept { return openForReading(path).error; }

FileError readFile(std::u16string_view path, std::vector<std::byte>& bytes) {
  bytes.clear();
  const OpenFile source = openForReading(path);
  if (source.error != FileError::None) return source.error;
  const FileHandle& file = source.file;

  std::vector<std::byte> content;
  if (static_cast<std::uint64_t>(source.size) >= content.max_size()) throw std::bad_alloc();
  // One byte more than is told, so that the end shows without another round; a file that grows
  // meanwhile is read to its end all the same.
  content.resize(static_cast<std::size_t>(source.size) + 1);
  for (std::size_t size = 0;;) {
    constexpr std::size_t kMaxRead = 1 << 30;
    DWORD count = 0;
    if (!ReadFile(file.get(), content.data() + size,
                  static_cast<DWORD>(std::min(kMaxRead, content.size() - size)), &count, nullptr)) {
      return lastError();
    }
    size += count;
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
  std::u16string pattern(folder);
  if (!endsInSeparator(pattern)) pattern += u'\\';
  pattern += u'*';
  const Path target(pattern);
  outcome = folder.empty() ? FileError::BadFileName : target.error();
  if (outcome != FileError::None) return {};
  WIN32_FIND_DATAW entry;
  const SearchHandle search(
      FindFirstFileExW(target.c_str(), FindExInfoBasic, &entry, FindExSearchNameMatch, nullptr, 0));
  if (!search) {
    outcome = lastError();
    // A drive's root without any entry is no failure.
    if (outcome == FileError::NotFound) outcome = FileError::None;
    return {};
  }
  std::vector<std::u16string> names;
  do {
    if (!isFolderAttribute(entry.dwFileAttributes)) {
      names.emplace_back(plainText(entry.cFileName));
    }
  } while (FindNextFileW(search.get(), &entry));
  return names;
}

}  // namespace quendal::platform
