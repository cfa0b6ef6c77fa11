#include "platform/files.h"

#include <algorithm>
#include <chrono>
#include <new>
#include <thread>

#include "base/path_text.h"

namespace quendal::platform {
namespace {

// Keeps the other appenders of the file out. They hold it for the moment of a write; one that is
// stopped, or a machine that is gone, must not stop every page.
class AppendLock {
 public:
  explicit AppendLock(const OpenFile& file) noexcept : file_(file), state_(tryLock(file)) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point end = Clock::now() + std::chrono::seconds(5);
    while (state_ == LockState::Taken && Clock::now() <= end) {
      waitBriefly();
      state_ = tryLock(file);
    }
  }
  // Closing the file would not do: a child of this process may hold it, too, until it is a program
  // of its own.
  ~AppendLock() {
    if (state_ == LockState::Held) unlock(file_);
  }
  AppendLock(const AppendLock&) = delete;
  AppendLock& operator=(const AppendLock&) = delete;

  [[nodiscard]] LockState state() const noexcept { return state_; }

 private:
  const OpenFile& file_;
  LockState state_;
};

}  // namespace

void waitBriefly() noexcept { std::this_thread::sleep_for(std::chrono::milliseconds(1)); }

bool fileExists(std::u16string_view path) noexcept {
  const PathStatus status = lookAt(withoutTrailingBlanks(path));
  return status.exists && !status.isFolder;
}

AppendFile::AppendFile(std::u16string_view path, Open how) noexcept
    : error_(openToAppend(path, how == Open::New, file_)) {}

FileError AppendFile::append(std::span<const std::byte> bytes, std::size_t headSize) noexcept {
  if (error_ != FileError::None) return error_;
  OpenFile file = std::move(file_);
  {
    const AppendLock lock(file);
    if (lock.state() == LockState::Taken) return FileError::PermissionDenied;
    const std::int64_t end = goToEnd(file);
    if (end < 0) return FileError::DeviceIo;
    if (end != 0) bytes = bytes.subspan(headSize);
    const FileError error = appendOnce(file, bytes, end, lock.state());
    if (error != FileError::None) return error;
  }
  return file.close();
}

FileError checkReadable(std::u16string_view path) noexcept {
  OpenFile file;
  std::int64_t size = 0;
  return openToRead(path, file, size);
}

FileError readFile(std::u16string_view path, std::vector<std::byte>& bytes) {
  bytes.clear();
  OpenFile file;
  std::int64_t told = 0;
  if (const FileError error = openToRead(path, file, told); error != FileError::None) return error;

  std::vector<std::byte> content;
  if (static_cast<std::uint64_t>(told) >= content.max_size()) throw std::bad_alloc();
  // One byte more than is told, so that the end shows without another round; a file that grows
  // meanwhile, or tells no size, is read to its end all the same.
  content.resize(static_cast<std::size_t>(told) + 1);
  std::size_t size = 0;
  for (std::size_t count = 1; count != 0; size += count) {
    if (size == content.size()) content.resize(std::max<std::size_t>(4096, size + size / 2));
    const FileError error = readSome(file, std::span(content).subspan(size), count);
    if (error != FileError::None) return error;
  }
  content.resize(size);
  bytes = std::move(content);
  return FileError::None;
}

}  // namespace quendal::platform
