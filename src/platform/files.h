// Files and folders, as the log writer and the reports need them. Paths are UTF-16 text as a page
// gives it; `\` and `/` separate parts, and text is never normalised. On POSIX a drive letter has
// no meaning: `C:\x` is the relative path `C:/x`, and `\\server\share\x` is `/server/share/x`.
//
// Every function that takes a path answers alike in both homes for these: BadFileName for a path
// that is empty, holds a NUL, has a part of more than 255 characters or is longer than 4095;
// PathNotFound for a file's path that ends in a separator or leads through a missing folder;
// PermissionDenied for a folder in place of a file.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quendal::platform {

/// Why a file operation failed, by the numbers that a page's file-system object raises.
enum class FileError : int {
  None = 0,
  BadFileName = 52,
  NotFound = 53,
  DeviceIo = 57,  // everything that is none of the others
  AlreadyExists = 58,
  DiskFull = 61,  // also a quota or the greatest size of a file
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
/// begins with two separators is a network path and keeps its server and share. Empty when the
/// path is empty or has no absolute form.
[[nodiscard]] std::u16string absolutePath(std::u16string_view path);

/// Creates one folder whose parent exists. None when it exists already, AlreadyExists when a file
/// of that name does.
[[nodiscard]] FileError createFolder(std::u16string_view path) noexcept;

/// Creates a file that holds `head`, with one write, so that no other process ever reads it or
/// appends to it before. AlreadyExists when there is a file or folder of that name, which is left
/// alone. A file whose head cannot be written is not left behind.
[[nodiscard]] FileError createFile(std::u16string_view path,
                                   std::span<const std::byte> head) noexcept;

/// Opens an existing file for appending, writes all bytes with one write and closes it. Other
/// processes may append to, read and rename the file meanwhile. NotFound when there is no such
/// file. A write that ends early (disk full) is taken back as far as the system allows: on POSIX
/// unless somebody appended after it, on Windows the system itself writes all or nothing. On
/// Windows a file that another program does not share fails with PermissionDenied after a short
/// wait (at most some 150 ms), since a file that is just being created is not shared either.
[[nodiscard]] FileError appendToFile(std::u16string_view path,
                                     std::span<const std::byte> bytes) noexcept;

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
