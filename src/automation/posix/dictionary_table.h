// The entries of a dictionary, in the order they came, and the way to find one by its key.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "automation/posix/dictionary_key.h"
#include "automation/posix/variants.h"

namespace quendal::automation {

/// A key that entries of any dictionaries can share.
using SharedKey = std::shared_ptr<const OwnedValue>;

/// An index of hashes with open addressing leads to the entries, unless they are few. A removed
/// entry stays as a gap until most of them are gaps.
///
/// What can run short of memory throws std::bad_alloc and changes nothing.
class DictionaryTable {
 public:
  struct Entry {
    OwnedValue item;
    SharedKey key;
    std::uint32_t hash = 0;
    bool isGap = false;
  };

  explicit DictionaryTable(bool ignoreCase = false) noexcept : ignoreCase_(ignoreCase) {}

  [[nodiscard]] bool ignoresCase() const noexcept { return ignoreCase_; }
  [[nodiscard]] std::size_t size() const noexcept { return entries_.size() - gaps_; }

  /// The entry with this key, whose hash is given; null when there is none.
  [[nodiscard]] Entry* find(const DictionaryKey& key, std::uint32_t hash);

  /// The first entry at or after a position, which moves there; null at the end.
  [[nodiscard]] const Entry* entryFrom(std::size_t& position) const noexcept {
    while (position < entries_.size() && entries_[position].isGap) ++position;
    return position < entries_.size() ? &entries_[position] : nullptr;
  }

  /// Adds an entry at the end. Its key is not in the table yet.
  void append(Entry&& entry);

  /// Replaces a key, keeping the entry's place, and gives back the old one. The new key is not in
  /// the table, except perhaps at this entry.
  [[nodiscard]] SharedKey rename(Entry& entry, SharedKey key, std::uint32_t hash);

  /// Takes an entry out.
  [[nodiscard]] Entry remove(Entry& entry) noexcept;

 private:
  static constexpr std::size_t kFew = 8;  // entries that are searched one by one

  void makeRoomInIndex();
  void fillIndex() noexcept;
  void addToIndex(std::size_t position) noexcept;

  std::vector<Entry> entries_;
  std::vector<std::uint32_t> index_;  // positions + 1, 0 where free; a power of two, or none
  std::size_t indexed_ = 0;           // places taken
  std::size_t gaps_ = 0;
  bool ignoreCase_;
};

}  // namespace quendal::automation
