// Registry content for tests, put where the running home reads it.
#pragma once

#include <cstdint>
#include <memory>
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
  std::string path;
  std::vector<ScratchValue> values;
};

/// All keys of a test lie below this one.
inline constexpr std::u16string_view kScratchRoot = u"Software\\QuendalScratch";

/// Keys that exist while the object lives; elsewhere than on Windows no others exist meanwhile.
class ScratchRegistry {
 public:
  explicit ScratchRegistry(const std::vector<ScratchKey>& keys);
  ~ScratchRegistry();

  /// False when the system does not let this account write there.
  [[nodiscard]] bool ready() const { return ready_; }

 private:
  bool ready_ = true;
  std::shared_ptr<const void> content_;  // what the keys are answered from, if they lie in memory
};

}  // namespace quendal::platform
