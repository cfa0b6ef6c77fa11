// The owner of a file descriptor.
#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace quendal::platform {

class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int descriptor) noexcept : descriptor_(descriptor) {}
  ~Descriptor() { (void)close(); }
  Descriptor(Descriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
  Descriptor& operator=(Descriptor&&) = delete;

  explicit operator bool() const noexcept { return descriptor_ >= 0; }
  [[nodiscard]] int get() const noexcept { return descriptor_; }
  [[nodiscard]] int release() noexcept { return std::exchange(descriptor_, -1); }

  /// False, with errno set, when the system reports at the closing that a write which it had put
  /// off has failed, as network file systems do.
  [[nodiscard]] bool close() noexcept {
    const int descriptor = std::exchange(descriptor_, -1);
    return descriptor < 0 || ::close(descriptor) == 0 || errno == EINTR;
  }

 private:
  int descriptor_ = -1;
};

/// Opens a file. Never waits for the other end of a pipe, and the file is not handed on to
/// programs that the process starts.
[[nodiscard]] inline Descriptor openFile(const char* path, int flags, mode_t mode = 0) noexcept {
  int descriptor;
  do {
    descriptor = ::open(path, flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, mode);
  } while (descriptor < 0 && errno == EINTR);
  return Descriptor(descriptor);
}

}  // namespace quendal::platform
