#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "tests/platform/scratch_registry.h"

namespace quendal::platform {

ScratchRegistry::ScratchRegistry(const std::vector<ScratchKey>& keys)
    : file_(std::filesystem::temp_directory_path() /
            ("quendal_registry_" + std::to_string(getpid()) + ".reg")) {
  std::ofstream out(file_);
  out << "REGEDIT4\n\n";
  for (const ScratchKey& key : keys) {
    out << "[" << std::string(kScratchRoot.begin(), kScratchRoot.end());
    out << (key.path.empty() ? "" : "\\") << key.path << "]\n";
    for (const ScratchValue& value : key.values) {
      out << "\"" << value.name << "\"=hex(" << std::hex << value.type << "):";
      for (std::size_t i = 0; i < value.bytes.size(); ++i) {
        char digits[8];
        std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned char>(value.bytes[i]));
        out << (i == 0 ? "" : i % 25 == 0 ? ",\\\n  " : ",") << digits;
      }
      out << "\n";
    }
  }
  out.close();
  ready_ = out.good() && setenv("QUENDAL_REGISTRY", file_.c_str(), 1) == 0;
}

ScratchRegistry::~ScratchRegistry() {
  unsetenv("QUENDAL_REGISTRY");
  std::remove(file_.c_str());
}

}  // namespace quendal::platform
