#include "platform/files.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

#include "base/path_text.h"
#include "platform/windows/wide.h"

namespace quendal::platform {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr int kOpenTries = 10;
constexpr DWORD kDiskQuotaExceeded = 1295;  // not in every header

class Path {
 public:
  explicit Path(std::u16string_view path) noexcept : text_(path), usable_(isPath(path)) {}

  /// None, or why there is no such path.
  [[nodiscard]] FileError error() const noexcept {
    return usable_ ? FileError::None : FileError::BadFileName;
  }
  [[nodiscard]] const wchar_t* c_str() const noexcept { return text_.c_str(); }

 private:
  WideText<kMaxPath + 1> text_;
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

bool isFolderAttribute(DWORD attributes) noexcept {
  return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

HANDLE handleOf(const OpenFile& file) noexcept { return reinterpret_cast<HANDLE>(file.native()); }

OpenFile openNative(const Path& path, DWORD access, DWORD disposition, DWORD flags) noexcept {
  return OpenFile(reinterpret_cast<std::intptr_t>(
      CreateFileW(path.c_str(), access, kShareAll, nullptr, disposition, flags, nullptr)));
}

// Where the lock is: far behind every content, so that it keeps no reader out.
OVERLAPPED lockPlace() noexcept {
  OVERLAPPED place{};
  place.OffsetHigh = std::numeric_limits<LONG>::max();
  return place;
}

}  // namespace

FileError OpenFile::close() noexcept {
  const std::intptr_t native = std::exchange(native_, kNone);
  if (native != kNone) CloseHandle(reinterpret_cast<HANDLE>(native));
  return FileError::None;
}

// Scanners of the system hold a new file for a moment; an entry need not be lost for that.
FileError openToAppend(std::u16string_view path, bool isNew, OpenFile& file) noexcept {
  const Path target(path);
  if (const FileError error = pathError(path, target); error != FileError::None) return error;
  for (int tries = kOpenTries;; --tries) {
    file = openNative(target, FILE_WRITE_DATA, isNew ? CREATE_NEW : OPEN_EXISTING,
                      FILE_ATTRIBUTE_NORMAL);
    if (file) return FileError::None;
    if (tries == 1 || GetLastError() != ERROR_SHARING_VIOLATION) return lastError();
    waitBriefly();
  }
}

FileError openToRead(std::u16string_view path, OpenFile& file, std::int64_t& size) noexcept {
  const Path target(path);
  if (const FileError error = pathError(path, target); error != FileError::None) return error;
  file = openNative(target, GENERIC_READ, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN);
  if (!file) return lastError();
  if (GetFileType(handleOf(file)) != FILE_TYPE_DISK) return FileError::PermissionDenied;
  LARGE_INTEGER told;
  if (!GetFileSizeEx(handleOf(file), &told)) return lastError();
  size = told.QuadPart;
  return FileError::None;
}

FileError readSome(const OpenFile& file, std::span<std::byte> into, std::size_t& count) noexcept {
  constexpr std::size_t kMaxRead = 1 << 30;
  DWORD read = 0;
  const auto wanted = static_cast<DWORD>(std::min(kMaxRead, into.size()));
  const bool done = ReadFile(handleOf(file), into.data(), wanted, &read, nullptr) != 0;
  count = read;
  return done ? FileError::None : lastError();
}

LockState tryLock(const OpenFile& file) noexcept {
  constexpr DWORD kFlags = LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY;
  OVERLAPPED place = lockPlace();
  if (LockFileEx(handleOf(file), kFlags, 0, 1, 0, &place)) return LockState::Held;
  const DWORD code = GetLastError();
  const bool isTaken = code == ERROR_LOCK_VIOLATION || code == ERROR_IO_PENDING;
  return isTaken ? LockState::Taken : LockState::None;
}

void unlock(const OpenFile& file) noexcept {
  OVERLAPPED place = lockPlace();
  UnlockFileEx(handleOf(file), 0, 1, 0, &place);
}

std::int64_t goToEnd(const OpenFile& file) noexcept {
  LARGE_INTEGER end;
  return SetFilePointerEx(handleOf(file), {}, &end, FILE_END) ? end.QuadPart : -1;
}

FileError appendOnce(const OpenFile& file, std::span<const std::byte> bytes, std::int64_t end,
                     LockState lock) noexcept {
  const HANDLE handle = handleOf(file);
  if (bytes.size() > std::numeric_limits<DWORD>::max()) return FileError::DiskFull;
  // Without the lock the end is left to the system, which finds it and writes in one step.
  const bool isHeld = lock == LockState::Held;
  OVERLAPPED atEnd{};
  atEnd.Offset = atEnd.OffsetHigh = std::numeric_limits<DWORD>::max();
  DWORD written = 0;
  FileError error = FileError::DiskFull;  // of a write that ends early
  if (!WriteFile(handle, bytes.data(), static_cast<DWORD>(bytes.size()), &written,
                 isHeld ? nullptr : &atEnd))
    error = lastError();  // perhaps of a later piece of it
  else if (written == bytes.size())
    return FileError::None;
  // Half an entry, perhaps half a character, would spoil all that follows in the file.
  if (isHeld && SetFilePointerEx(handle, {.QuadPart = end}, nullptr, FILE_BEGIN))
    SetEndOfFile(handle);
  return error;
}

PathStatus lookAt(std::u16string_view path) noexcept {
  const Path target(path);
  WIN32_FILE_ATTRIBUTE_DATA data;
  if (target.error() != FileError::None ||
      !GetFileAttributesExW(target.c_str(), GetFileExInfoStandard, &data)) {
    return {};
  }
  const bool folder = isFolderAttribute(data.dwFileAttributes);
  const LARGE_INTEGER size{{data.nFileSizeLow, static_cast<LONG>(data.nFileSizeHigh)}};
  return {true, folder, folder ? 0 : size.QuadPart};
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

FileError renameFile(std::u16string_view from, std::u16string_view to) noexcept {
  const Path source(from);
  const Path target(to);
  if (const FileError error = pathError(from, source); error != FileError::None) return error;
  if (const FileError error = pathError(to, target); error != FileError::None) return error;
  for (int tries = kOpenTries;; --tries) {
    if (MoveFileExW(source.c_str(), target.c_str(), 0)) return FileError::None;
    const DWORD code = GetLastError();
    if (tries == 1 || code != ERROR_SHARING_VIOLATION) return fileError(code);
    waitBriefly();  // as in openToAppend
  }
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
