#include "automation/posix/dictionary_table.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <new>
#include <utility>

#include "automation/posix/strings.h"

namespace quendal::automation {

DictionaryTable::DictionaryTable(DictionaryTable& emptied)
    : room_(nullptr), roomSize_(0), ignoreCase_(emptied.ignoreCase_) {
  // Out of the other's room, which it may need again at once.
  if (emptied.block_ == nullptr && emptied.count_ > 0) emptied.moveTo(emptied.count_);
  block_ = std::move(emptied.block_);
  entries_ = std::exchange(emptied.entries_, emptied.room_);
  capacity_ = std::exchange(emptied.capacity_, emptied.roomSize_);
  count_ = std::exchange(emptied.count_, 0);
  slots_ = std::exchange(emptied.slots_, {});
  usedSlots_ = std::exchange(emptied.usedSlots_, 0);
  gaps_ = std::exchange(emptied.gaps_, 0);
}

DictionaryTable::~DictionaryTable() {
  for (std::size_t i = 0; i < count_; ++i) {
    if (isGap(entries_[i])) continue;
    VariantClear(&entries_[i].key);
    VariantClear(&entries_[i].item);
  }
}

std::size_t DictionaryTable::find(const DictionaryKey& key) const {
  if (!isIndexed()) {
    for (std::size_t i = 0; i < count_; ++i) {
      if (entries_[i].hash == key.hash && isSameKey(key, entries_[i].key, ignoreCase_)) return i;
    }
    return kNone;
  }
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t i = key.hash & mask; slots_[i].entry != 0; i = (i + 1) & mask) {
    const std::size_t position = slots_[i].entry - 1;
    if (slots_[i].hash == key.hash && isSameKey(key, entries_[position].key, ignoreCase_)) {
      return position;
    }
  }
  return kNone;
}

// A new entry, all Empty.
DictionaryTable::Entry& DictionaryTable::append(std::uint32_t hash) {
  constexpr std::size_t kFirstBlock = 8;
  if (count_ == capacity_) moveTo(std::max(kFirstBlock, count_ * 2));
  if (isIndexed() || count_ == kMostUnindexed) makeRoomForSlot();
  if (isIndexed()) insertSlot(hash, count_);
  return *new (&entries_[count_++]) Entry{{}, {}, hash};
}

void DictionaryTable::append(const DictionaryKey& key, const VARIANT& keyValue,
                             const VARIANT& item) {
  Entry& entry = append(key.hash);
  entry.key = keyValue;
  entry.item = item;
}

DictionaryTable::Entry* DictionaryTable::appendNewText(BSTR key, std::uint32_t hash) {
  const bool mayExist =
      isIndexed() || std::any_of(entries_, entries_ + count_,
                                 [hash](const Entry& entry) { return entry.hash == hash; });
  if (mayExist) {
    DictionaryKey wanted = textKey(viewOf(key));
    wanted.hash = hash;
    if (find(wanted) != kNone) return nullptr;
  }
  Entry& entry = append(hash);
  entry.key.vt = VT_BSTR;
  entry.key.bstrVal = key;
  return &entry;
}

// Puts the entries into a block for this many. Their bytes move; nothing points to them.
void DictionaryTable::moveTo(std::size_t capacity) {
  void* moved = std::realloc(block_.get(), capacity * sizeof(Entry));
  if (moved == nullptr) throw std::bad_alloc();
  const bool wasRoom = block_ == nullptr;
  static_cast<void>(block_.release());
  block_.reset(static_cast<Entry*>(moved));
  if (wasRoom && count_ > 0) std::memcpy(moved, entries_, count_ * sizeof(Entry));
  entries_ = block_.get();
  capacity_ = capacity;
}

void DictionaryTable::reserve(std::size_t count) {
  if (count > capacity_) moveTo(count);
  if (count > kMostUnindexed && slots_.size() < count * 2) index(count);
}

void DictionaryTable::trim() {
  if (block_ == nullptr || capacity_ <= count_ * 2) return;
  moveTo(std::max<std::size_t>(count_, 1));
  if (!isIndexed()) return;
  if (count_ > kMostUnindexed) return index(count_);
  compact();
  slots_ = {};
}

VARIANT DictionaryTable::exchangeItem(std::size_t position, const VARIANT& item) noexcept {
  return std::exchange(entries_[position].item, item);
}

VARIANT DictionaryTable::exchangeKey(std::size_t position, const DictionaryKey& key,
                                     const VARIANT& keyValue) {
  Entry& entry = entries_[position];
  if (key.hash != entry.hash) {
    if (isIndexed()) {
      makeRoomForSlot();
      // The slot of the old hash stays and does no harm: its entry has another key now.
      insertSlot(key.hash, position);
    }
    entry.hash = key.hash;
  }
  return std::exchange(entry.key, keyValue);
}

DictionaryTable::Entry DictionaryTable::remove(std::size_t position) noexcept {
  const Entry removed = entries_[position];
  if (!isIndexed()) {
    std::copy(entries_ + position + 1, entries_ + count_, entries_ + position);
    --count_;
    return removed;
  }
  entries_[position].key.vt = kGap;
  ++gaps_;
  if (gaps_ * 2 > count_) compact();
  return removed;
}

void DictionaryTable::compact() noexcept {
  count_ = static_cast<std::size_t>(std::remove_if(entries_, entries_ + count_, isGap) - entries_);
  gaps_ = 0;
  std::fill(slots_.begin(), slots_.end(), Slot{});
  fillSlots();
}

void DictionaryTable::makeRoomForSlot() {
  // At most half of the slots are taken, so that searches stay short.
  if ((usedSlots_ + 1) * 2 > slots_.size()) index(count_ + 1);
}

// Makes an index with slots for this many entries.
void DictionaryTable::index(std::size_t entries) {
  constexpr std::size_t kFewestSlots = 32;
  std::vector<Slot> slots(std::max(kFewestSlots, std::bit_ceil(entries * 2)));
  slots_.swap(slots);
  fillSlots();
}

void DictionaryTable::fillSlots() noexcept {
  usedSlots_ = 0;
  for (std::size_t i = 0; i < count_; ++i) insertSlot(entries_[i].hash, i);
}

void DictionaryTable::insertSlot(std::uint32_t hashValue, std::size_t position) noexcept {
  const std::size_t mask = slots_.size() - 1;
  std::size_t i = hashValue & mask;
  while (slots_[i].entry != 0) i = (i + 1) & mask;
  slots_[i] = {hashValue, static_cast<std::uint32_t>(position + 1)};
  ++usedSlots_;
}

}  // namespace quendal::automation
