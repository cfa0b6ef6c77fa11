// The entries of a dictionary, in the order they came, and the way to find one by its key.
#pragma once

#include <quendal/automation.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

#include "automation/posix/dictionary_key.h"

namespace quendal::automation {

/// Owns keys and items. The entries stand in one block in the order of insertion, the first few in
/// room that the table's maker gives. Up to `kMostUnindexed` of them are searched from the first to
/// the last; more have an index of hashes with open addressing. A removed entry of an indexed table
/// stays as a gap until half of the entries are gaps.
///
/// What can run short of memory throws std::bad_alloc and changes nothing.
class DictionaryTable {
 public:
  struct Entry {
    VARIANT key;
    VARIANT item;
    std::uint32_t hash;
  };

  static constexpr std::size_t kMostUnindexed = 8;
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  /// Uninitialized room for the first entries, which outlives the table.
  DictionaryTable(Entry* room, std::size_t count) noexcept : room_(room), roomSize_(count) {}
  /// A table with all entries of another one, which is empty then.
  explicit DictionaryTable(DictionaryTable& emptied);
  DictionaryTable& operator=(const DictionaryTable&) = delete;
  ~DictionaryTable();

  [[nodiscard]] std::size_t size() const noexcept { return count_ - gaps_; }

  [[nodiscard]] bool ignoresCase() const noexcept { return ignoreCase_; }

  /// For an empty table only.
  void setIgnoreCase(bool ignore) noexcept { ignoreCase_ = ignore; }

  /// Makes room for entries to come, up to this many in all.
  void reserve(std::size_t count);

  /// Gives back room that is not used, when it is more than growth leaves.
  void trim();

  /// Position of the entry with this key; `kNone` when there is none.
  [[nodiscard]] std::size_t find(const DictionaryKey& key) const;

  [[nodiscard]] const Entry& at(std::size_t position) const noexcept { return entries_[position]; }

  /// The first entry at or after a position, which moves there; null at the end.
  [[nodiscard]] const Entry* entryFrom(std::size_t& position) const noexcept {
    while (position < count_ && isGap(entries_[position])) ++position;
    return position < count_ ? &entries_[position] : nullptr;
  }

  /// Adds an entry at the end, taking key and item over. `key` is `keyValue` and is not in the
  /// table yet.
  void append(const DictionaryKey& key, const VARIANT& keyValue, const VARIANT& item);

  /// Adds an entry with a text for its key, which it takes over, and an Empty item, which the
  /// caller sets at once. Null, and nothing happens, when the key is there already.
  [[nodiscard]] Entry* appendNewText(BSTR key, std::uint32_t hash);

  /// Replaces an item and gives back the old one, which the caller owns then.
  [[nodiscard]] VARIANT exchangeItem(std::size_t position, const VARIANT& item) noexcept;

  /// Replaces a key, keeping the entry's place, and gives back the old one. The new key is not in
  /// the table, except perhaps at this position.
  [[nodiscard]] VARIANT exchangeKey(std::size_t position, const DictionaryKey& key,
                                    const VARIANT& keyValue);

  /// Takes an entry out; the caller owns it then.
  [[nodiscard]] Entry remove(std::size_t position) noexcept;

  /// Calls `visit(entry)` for each entry in order, until it fails.
  template <class Visit>
  HRESULT forEach(Visit visit) const {
    for (std::size_t i = 0; i < count_; ++i) {
      if (isGap(entries_[i])) continue;
      const HRESULT result = visit(entries_[i]);
      if (FAILED(result)) return result;
    }
    return S_OK;
  }

 private:
  struct Slot {
    std::uint32_t hash;
    std::uint32_t entry;  // position + 1; 0 when free
  };

  static constexpr VARTYPE kGap = 0xFFFF;  // the tag of a removed entry's key
  static bool isGap(const Entry& entry) noexcept { return entry.key.vt == kGap; }

  struct Free {
    void operator()(Entry* block) const noexcept { std::free(block); }
  };
  using Block = std::unique_ptr<Entry[], Free>;

  [[nodiscard]] bool isIndexed() const noexcept { return !slots_.empty(); }
  void moveTo(std::size_t capacity);
  Entry& append(std::uint32_t hash);
  void makeRoomForSlot();
  void index(std::size_t entries);
  void fillSlots() noexcept;
  void insertSlot(std::uint32_t hash, std::size_t position) noexcept;
  void compact() noexcept;

  Entry* const room_;
  const std::size_t roomSize_;
  Entry* entries_ = room_;  // or the block
  std::size_t count_ = 0;
  std::size_t capacity_ = roomSize_;
  Block block_;
  std::vector<Slot> slots_;  // a power of two, or none
  std::size_t usedSlots_ = 0;
  std::size_t gaps_ = 0;
  bool ignoreCase_ = false;
};

}  // namespace quendal::automation
