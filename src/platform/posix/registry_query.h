// One question to the composed registry: what does a key hold? Sources tell all keys and values
// that they know, in order; the query keeps what belongs to its key and forgets the rest, so the
// cost follows the source and nothing is built that nobody asked for.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace quendal::platform {

/// A value as a registry stores it; `bytes` of text types are in the code page.
struct StoredValue {
  std::u16string name;
  std::uint32_t type = 0;
  std::string bytes;
};

/// A text value with its terminator.
[[nodiscard]] StoredValue storedText(std::u16string_view name, std::u16string_view text);

class RegistryQuery {
 public:
  /// Asks for the key `path` (parts separated by `\`, names without regard to case). The empty
  /// path is the root.
  explicit RegistryQuery(std::u16string_view path);

  /// Whether telling of the key `path`, or of keys below it, can change the answer.
  [[nodiscard]] bool wants(std::u16string_view path) const;

  /// There is a key `path`, and so are those above it. Values told next are its values.
  void tellKey(std::u16string_view path);

  /// The values told next belong to no key.
  void tellNoKey() noexcept { inside_ = false; }

  /// A value of the key told last. A name told again takes the place of the first.
  void tellValue(StoredValue value);

  [[nodiscard]] bool exists() const noexcept { return exists_; }
  [[nodiscard]] const std::vector<StoredValue>& values() const noexcept { return values_; }
  [[nodiscard]] const std::vector<std::u16string>& keys() const noexcept { return keys_; }

  /// The value of that name; null when there is none.
  [[nodiscard]] const StoredValue* value(std::u16string_view name) const;

 private:
  std::u16string path_;
  bool exists_;
  bool inside_ = false;  // the key told last is the one asked for
  std::vector<StoredValue> values_;
  std::vector<std::u16string> keys_;
  std::unordered_map<std::u16string, std::size_t> valueByName_;  // lower-case names
  std::unordered_set<std::u16string> seenKeys_;                  // lower-case names
};

}  // namespace quendal::platform
