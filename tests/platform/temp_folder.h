// A folder for one test, and files in it as text.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"
#include "platform/identities.h"

namespace quendal::platform {

inline std::span<const std::byte> bytesOf(std::string_view text) {
  return std::as_bytes(std::span(text));
}

inline std::string contentOf(std::u16string_view path) {
  std::vector<std::byte> bytes;
  if (readFile(path, bytes) != FileError::None) return "<cannot be read>";
  return std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size());
}

/// A new empty folder, removed with all that is in it.
class TempFolder {
 public:
  TempFolder()
      : path_((std::filesystem::temp_directory_path() / (u"quendal-" + newIdentifier()))
                  .u16string()) {
    EXPECT_EQ(createFolder(path_), FileError::None);
  }
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(native(), ignored);
  }
  TempFolder(const TempFolder&) = delete;

  /// The path of an entry, joined with `\` in both homes.
  [[nodiscard]] std::u16string operator/(std::u16string_view name) const {
    return path_ + u"\\" + std::u16string(name);
  }
  [[nodiscard]] const std::u16string& path() const { return path_; }

  /// For the system's own functions, which on POSIX know "/" only.
  [[nodiscard]] std::filesystem::path native() const {
    std::u16string text = path_;
    std::ranges::replace(text, u'\\', u'/');
    return text;
  }

 private:
  std::u16string path_;
};

}  // namespace quendal::platform
