// An open file, and the single steps on it, which each home takes in its own way. files.cpp makes
// the operations of files.h from them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <utility>

namespace quendal::platform {

enum class FileError : int;

/// The owner of a file that the system has open.
class OpenFile {
 public:
  explicit OpenFile(std::intptr_t native = kNone) noexcept : native_(native) {}
  OpenFile(OpenFile&& other) noexcept : native_(std::exchange(other.native_, kNone)) {}
  OpenFile& operator=(OpenFile&& other) noexcept {
    std::swap(native_, other.native_);
    return *this;
  }
  ~OpenFile() { static_cast<void>(close()); }

  explicit operator bool() const noexcept { return native_ != kNone; }
  /// The system's handle or descriptor.
  [[nodiscard]] std::intptr_t native() const noexcept { return native_; }

  /// None, or the error of a write that the system had put off, as network file systems do.
  [[nodiscard]] FileError close() noexcept;

 private:
  static constexpr std::intptr_t kNone = -1;

  std::intptr_t native_;
};

/// Opens an existing file for appending, or creates it. See AppendFile for the errors.
[[nodiscard]] FileError openToAppend(std::u16string_view path, bool isNew, OpenFile& file) noexcept;

/// Opens a file for reading, and how many bytes it says that it has. PermissionDenied for devices,
/// which may never end.
[[nodiscard]] FileError openToRead(std::u16string_view path, OpenFile& file,
                                   std::int64_t& size) noexcept;

/// Reads the next bytes; `count` is 0 at the end of the file.
[[nodiscard]] FileError readSome(const OpenFile& file, std::span<std::byte> into,
                                 std::size_t& count) noexcept;

/// Whether other appenders are kept out; `None` where the file system has no locks.
enum class LockState { Held, Taken, None };
[[nodiscard]] LockState tryLock(const OpenFile& file) noexcept;
void unlock(const OpenFile& file) noexcept;

/// Goes to the end of a file, and tells where that is in bytes; -1 where there is none.
std::int64_t goToEnd(const OpenFile& file) noexcept;

/// Writes all bytes with one write at `end`, where the file is; without a lock at the end that the
/// system finds. A write that ends early is taken back.
[[nodiscard]] FileError appendOnce(const OpenFile& file, std::span<const std::byte> bytes,
                                   std::int64_t end, LockState lock) noexcept;

/// Waits a millisecond or little more.
void waitBriefly() noexcept;

}  // namespace quendal::platform
