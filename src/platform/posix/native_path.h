// Paths in the form that the system takes, and what its error numbers say of them.
#pragma once

#include <array>
#include <climits>
#include <cstddef>
#include <string_view>

#include "platform/files.h"

namespace quendal::platform {

/// A path as UTF-8 with "/" between its parts. Separators in a row become one, so that what looks
/// like a network share is an ordinary absolute path; a drive letter has no meaning and stays part
/// of the name. The text is held in place: no path that the system takes is longer.
class NativePath {
 public:
  explicit NativePath(std::u16string_view path) noexcept;

  /// None, or why there is no such path: then it holds the empty text, which names no file.
  [[nodiscard]] FileError error() const noexcept { return error_; }

  [[nodiscard]] const char* c_str() const noexcept { return text_.data(); }
  [[nodiscard]] bool endsInSeparator() const noexcept {
    return size_ > 0 && text_[size_ - 1] == '/';
  }

  /// The path of the folder that holds the last part: "." when there is only one part, "/" for
  /// the root itself.
  [[nodiscard]] NativePath parent() const noexcept;

 private:
  NativePath() noexcept { text_[0] = '\0'; }
  bool takePlain(std::u16string_view path) noexcept;
  void append(std::string_view text) noexcept;

  std::array<char, PATH_MAX> text_;
  std::size_t size_ = 0;
  FileError error_ = FileError::None;
};

/// Opens a file; none, with errno set, when that fails. Never waits for the other end of a pipe,
/// and the file is not handed on to programs that the process starts.
[[nodiscard]] OpenFile openNative(const char* path, int flags, unsigned mode = 0) noexcept;

/// What an error number of the system means for a file whose path plays no role in it.
[[nodiscard]] FileError fileError(int code) noexcept;

/// What an error number of the system means for `path`: a missing file and a missing folder on
/// the way to it have one number, so the folder is looked at.
[[nodiscard]] FileError fileError(int code, const NativePath& path) noexcept;

}  // namespace quendal::platform
