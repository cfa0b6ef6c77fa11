#include "platform/posix/native_path.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <exception>

#include "base/path_text.h"
#include "base/utf8.h"

namespace quendal::platform {

NativePath::NativePath(std::u16string_view path) noexcept : NativePath() {
  static_assert(kMaxPath < PATH_MAX);
  if (!isPath(path)) {
    error_ = FileError::BadFileName;
    return;
  }
  if (takePlain(path)) return;
  try {
    append(toUtf8(path));
  } catch (const std::exception&) {  // out of memory
    error_ = FileError::DeviceIo;
  }
}

// Takes a path that needs no more than other separators, as nearly all do: loops without branches.
// False, and nothing is taken, for characters beyond ASCII and for separators in a row.
bool NativePath::takePlain(std::u16string_view path) noexcept {
  unsigned units = 0;
  for (std::size_t i = 0; i < path.size(); ++i) {
    units |= path[i];
    text_[i] = path[i] == u'\\' ? '/' : static_cast<char>(path[i]);
  }
  unsigned doubled = 0;
  for (std::size_t i = 1; i < path.size(); ++i)
    doubled |= static_cast<unsigned>(text_[i - 1] == '/') & static_cast<unsigned>(text_[i] == '/');
  const bool isPlain = units < 0x80 && doubled == 0;
  size_ = isPlain ? path.size() : 0;
  text_[size_] = '\0';
  return isPlain;
}

void NativePath::append(std::string_view text) noexcept {
  std::size_t size = size_;
  for (const char unit : text) {
    const bool separator = isSeparator(static_cast<unsigned char>(unit));
    if (separator && size > 0 && text_[size - 1] == '/') continue;
    if (size + 1 == text_.size()) {
      error_ = FileError::BadFileName;
      size = 0;
      break;
    }
    text_[size++] = separator ? '/' : unit;
  }
  text_[size] = '\0';
  size_ = size;
}

NativePath NativePath::parent() const noexcept {
  std::string_view path(text_.data(), size_);
  if (path.size() > 1 && path.back() == '/') path.remove_suffix(1);
  const std::size_t slash = path.rfind('/');
  NativePath folder;
  folder.append(slash == path.npos ? std::string_view(".")
                                   : path.substr(0, std::max<std::size_t>(slash, 1)));
  return folder;
}

OpenFile openNative(const char* path, int flags, unsigned mode) noexcept {
  int descriptor;
  do {
    descriptor = ::open(path, flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, mode);
  } while (descriptor < 0 && errno == EINTR);
  return OpenFile(descriptor);
}

FileError fileError(int code) noexcept {
  switch (code) {
    case ENOENT:
      return FileError::NotFound;
    case ENOTDIR:
      return FileError::PathNotFound;
    case EEXIST:
      return FileError::AlreadyExists;
    case EACCES:
    case EPERM:
    case EROFS:
    case ETXTBSY:
    case EBUSY:
    case EISDIR:  // a folder in place of a file
    case ENXIO:   // a pipe that nobody reads
      return FileError::PermissionDenied;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return FileError::DiskFull;
    case EMFILE:
    case ENFILE:
      return FileError::TooManyFiles;
    case ENAMETOOLONG:
    case EINVAL:  // characters that the file system does not store
    case EILSEQ:
      return FileError::BadFileName;
    case EXDEV:
      return FileError::PathFileAccess;
    default:
      return FileError::DeviceIo;
  }
}

FileError fileError(int code, const NativePath& path) noexcept {
  if (code != ENOENT) return fileError(code);
  struct stat status;
  const bool folderExists = ::stat(path.parent().c_str(), &status) == 0 && S_ISDIR(status.st_mode);
  return folderExists ? FileError::NotFound : FileError::PathNotFound;
}

}  // namespace quendal::platform
