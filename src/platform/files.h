// Files and folders, as the log writer and the reports need them. Paths are UTF-16 text as a page
// gives it; `\` and `/` separate parts, and text is never normalised. On POSIX a drive letter has
// no meaning: `C:\x` is the relative path `C:/x`, and `\\server\share\x` is `/server/share/x`.
//
// Every function that takes a path answers alike in both homes for these: BadFileName for a path
// that is empty, holds a NUL, has a part of more than 255 characters or is longer than 4095;
// PathNotFound for a file's path that ends in a separator or leads through a missing folder;
// PermissionDenied for a folder in place of a file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/open_file.h"

namespace quendal::platform {

/// Why a file operation failed, by the numbers that a page's file-system object raises.
enum class FileError : int {
  None = 0,
  BadFileName = 52,
  NotFound = 53,
  DeviceIo = 57,  // everything that is none of the others
  AlreadyExists = 58,
  DiskFull = 61,  // also a quota or the greatest size of a file
  TooManyFiles = 67,
  PermissionDenied = 70,
  PathFileAccess = 75,  // a rename to another volume
  PathNotFound = 76,
};

/// What one look at a path tells. `exists` is false for anything that cannot be looked at.
struct PathStatus {
  bool exists = false;
  bool isFolder = false;
  std::int64_t size = 0;  // bytes; 0 for a folder
};
[[nodiscard]] PathStatus lookAt(std::u16string_view path) noexcept;

/// True when a file (not a folder) of that name exists. Trailing blanks in the last part are
/// ignored, as the file system of a web server ignores them.
[[nodiscard]] bool fileExists(std::u16string_view path) noexcept;

/// Absolute form of a path: against the current folder, with "." and ".." resolved, separators
/// as `\` and single, a trailing one kept. On POSIX it begins with `\`; on both homes a path that
/// begins with two separators is a network path and keeps its server and share. Empty when there
/// is no such path (BadFileName of the others), or no current folder.
[[nodiscard]] std::u16string absolutePath(std::u16string_view path);

/// Creates one folder whose parent exists. None when it exists already, AlreadyExists when a file
/// of that name does.
[[nodiscard]] FileError createFolder(std::u16string_view path) noexcept;

/// A file that is open for appending. Other processes may append to, read and rename it meanwhile.
class AppendFile {
 public:
  enum class Open { Existing, New };

  /// Opens an existing file, or creates one. NotFound and AlreadyExists, when it is the other way.
  /// On Windows a file that another program does not share fails with PermissionDenied after a
  /// short wait (at most some 150 ms): scanners hold files for a moment.
  explicit AppendFile(std::u16string_view path, Open how = Open::Existing) noexcept;

  /// None, or why it is not open.
  [[nodiscard]] FileError error() const noexcept { return error_; }
  /// Bytes; -1 when it is not open.
  [[nodiscard]] std::int64_t size() const noexcept { return goToEnd(file_); }

  /// Writes all bytes at its end with one write, and closes it. The first `headSize` of them are
  /// the head of a new file: they go only into one that is still empty. `error` when it is not
  /// open.
  ///
  /// Each append finds the end and writes under a lock of its own, also across the machines of a
  /// network share, and the system takes the lock from a process that dies. Where a file system has
  /// no locks, appends exclude each other within one machine only. A write that ends early (disk
  /// full) is taken back.
  [[nodiscard]] FileError append(std::span<const std::byte> bytes,
                                 std::size_t headSize = 0) noexcept;

 private:
  OpenFile file_;
  FileError error_;
};

/// Creates a file and writes `head`, unless an append was first to write that into it.
/// AlreadyExists when there is a file or folder of that name, which is left alone. A file whose
/// head cannot be written stays behind empty.
[[nodiscard]] inline FileError createFile(std::u16string_view path,
                                          std::span<const std::byte> head) noexcept {
  return AppendFile(path, AppendFile::Open::New).append(head, head.size());
}

/// Appends to an existing file. NotFound when there is no such file.
[[nodiscard]] inline FileError appendToFile(std::u16string_view path,
                                            std::span<const std::byte> bytes,
                                            std::size_t headSize = 0) noexcept {
  return AppendFile(path).append(bytes, headSize);
}

/// Renames a file; never replaces an existing one (AlreadyExists). NotFound when there is no such
/// file, PathNotFound when a folder on either path is missing.
[[nodiscard]] FileError renameFile(std::u16string_view from, std::u16string_view to) noexcept;

/// None when the file can be read now, else why not, as `readFile` tells it. Nothing is read.
[[nodiscard]] FileError checkReadable(std::u16string_view path) noexcept;

/// Reads a whole file. None, and `bytes` holds the content; otherwise `bytes` is empty. Devices
/// and pipes are not read (PermissionDenied). Throws std::bad_alloc for what memory cannot hold.
[[nodiscard]] FileError readFile(std::u16string_view path, std::vector<std::byte>& bytes);

/// Names of the files (not folders) of a folder, in the order of its listing; on POSIX, where that
/// is arbitrary, in the order of their characters. Empty when the folder cannot be listed; `error`
/// tells why, or None.
[[nodiscard]] std::vector<std::u16string> listFiles(std::u16string_view folder,
                                                    FileError* error = nullptr);

}  // namespace quendal::platform
