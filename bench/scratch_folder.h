// A folder for the files of a benchmark.
#pragma once

#include <filesystem>

#include "platform/identities.h"

namespace quendal::bench {

/// A new empty folder, removed with all that is in it.
class ScratchFolder {
 public:
  ScratchFolder()
      : path_(std::filesystem::temp_directory_path() /
              (u"quendal-bench-" + platform::newIdentifier())) {
    std::filesystem::create_directory(path_);
  }
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  [[nodiscard]] std::filesystem::path operator/(const char* name) const { return path_ / name; }

 private:
  std::filesystem::path path_;
};

}  // namespace quendal::bench
