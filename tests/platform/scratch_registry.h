// Registry content for tests, put where the running home reads it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quendal::platform {

struct ScratchValue {
  std::string name;
  std::uint32_t type;
  std::string bytes;  // as stored for single-byte readers, with its terminators
};
struct ScratchKey {
  std::string path;  // below kScratchRoot; empty for the root itself
  std::vector<ScratchValue> values;
};

inline constexpr std::u16string_view kScratchRoot = u"Software\\QuendalScratch";

/// Keys that exist while the object lives.
class ScratchRegistry {
 public:
  explicit ScratchRegistry(const std::vector<ScratchKey>& keys);
  ~ScratchRegistry();

  /// False when the system does not let this account write there.
  [[nodiscard]] bool ready() const { return ready_; }

 private:
  bool ready_ = false;
  std::string file_;
};

}  // namespace quendal::platform
