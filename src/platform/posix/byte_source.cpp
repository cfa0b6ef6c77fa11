#include "platform/posix/byte_source.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>

#include "platform/posix/native_path.h"

namespace quendal::platform {

FileBytes::FileBytes(const char* nativePath) noexcept : file_(openNative(nativePath, O_RDONLY)) {}

std::size_t FileBytes::read(std::uint64_t offset, std::span<std::byte> into) noexcept {
  if (into.size() > window_.size()) return readDirectly(offset, into);
  const bool inWindow = offset >= windowOffset_ && offset - windowOffset_ <= windowSize_ &&
                        into.size() <= windowSize_ - (offset - windowOffset_);
  if (!inWindow) {
    windowOffset_ = offset;
    windowSize_ = readDirectly(offset, window_);
  }
  const auto skip = static_cast<std::size_t>(offset - windowOffset_);
  const std::size_t count = std::min(into.size(), windowSize_ - skip);
  std::copy_n(window_.begin() + static_cast<std::ptrdiff_t>(skip), count, into.begin());
  return count;
}

std::size_t FileBytes::readDirectly(std::uint64_t offset, std::span<std::byte> into) noexcept {
  constexpr std::uint64_t kLastOffset = std::numeric_limits<off_t>::max();
  if (!isOpen() || offset > kLastOffset || into.size() > kLastOffset - offset) return 0;
  std::size_t done = 0;
  while (done < into.size()) {
    const ssize_t count = ::pread(static_cast<int>(file_.native()), into.data() + done,
                                  into.size() - done, static_cast<off_t>(offset + done));
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) break;
    done += static_cast<std::size_t>(count);
  }
  return done;
}

}  // namespace quendal::platform
