// Bytes that are read piece by piece by their offset, so that a reader of a file format touches
// only what it needs and works on a file and on memory alike.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/open_file.h"

namespace quendal::platform {

class ByteSource {
 public:
  virtual ~ByteSource() = default;

  /// Copies the bytes from `offset` on. Returns how many were there: fewer than asked for at the
  /// end or when the source cannot be read; the rest of `into` is then unspecified.
  [[nodiscard]] virtual std::size_t read(std::uint64_t offset,
                                         std::span<std::byte> into) noexcept = 0;

  /// True when all bytes asked for were there.
  [[nodiscard]] bool readAll(std::uint64_t offset, std::span<std::byte> into) noexcept {
    return read(offset, into) == into.size();
  }
};

/// A file. It is read and not mapped: a file that another process cuts short meanwhile
/// then gives a short read, where a mapping would end the process. Small reads are served from
/// one window, because the records of a file format lie close together.
class FileBytes final : public ByteSource {
 public:
  /// Opens a file by its native path. A folder or a pipe holds no bytes, and nothing waits for
  /// them.
  explicit FileBytes(const char* nativePath) noexcept;

  /// False when there is no such file or it may not be read; every read then gives nothing.
  [[nodiscard]] bool isOpen() const noexcept { return static_cast<bool>(file_); }

  [[nodiscard]] std::size_t read(std::uint64_t offset, std::span<std::byte> into) noexcept override;

 private:
  std::size_t readDirectly(std::uint64_t offset, std::span<std::byte> into) noexcept;

  OpenFile file_;
  std::uint64_t windowOffset_ = 0;
  std::size_t windowSize_ = 0;
  std::array<std::byte, 4096> window_;
};

}  // namespace quendal::platform
