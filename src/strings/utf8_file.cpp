#include "strings/utf8_file.h"

#include <span>
#include <string>

#include "base/utf8.h"
#include "platform/files.h"

namespace quendal::strings {

bool appendToUtf8File(std::u16string_view path, std::u16string_view text) {
  using platform::FileError;
  // A file that can only be written counts as one that cannot be read, and is left alone.
  if (platform::checkReadable(path) != FileError::None) return false;
  const std::string bytes = toUtf8(text);
  return platform::appendToFile(path, std::as_bytes(std::span(bytes))) == FileError::None;
}

}  // namespace quendal::strings
