#include "automation/posix/dictionary_table.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace quendal::automation {

DictionaryTable::Entry* DictionaryTable::find(const DictionaryKey& key, std::uint32_t hash) {
  const auto isSought = [&](const Entry& entry) {
    if (entry.isGap || entry.hash != hash) return false;
    DictionaryKey found;
    return SUCCEEDED(readKey(*entry.key, found)) && isSameKey(key, found, ignoreCase_);
  };
  if (index_.empty()) {
    for (Entry& entry : entries_)
      if (isSought(entry)) return &entry;
    return nullptr;
  }
  const std::size_t mask = index_.size() - 1;
  for (std::size_t i = hash & mask; index_[i] != 0; i = (i + 1) & mask) {
    Entry& entry = entries_[index_[i] - 1];
    if (isSought(entry)) return &entry;
  }
  return nullptr;
}

void DictionaryTable::append(Entry&& entry) {
  makeRoomInIndex();
  if (entries_.empty()) entries_.reserve(kFew / 2);
  entries_.push_back(std::move(entry));
  addToIndex(entries_.size() - 1);
}

SharedKey DictionaryTable::rename(Entry& entry, SharedKey key, std::uint32_t hash) {
  if (entry.hash != hash) {
    makeRoomInIndex();
    // The place of the old hash stays and does no harm: its entry has another hash now.
    entry.hash = hash;
    addToIndex(static_cast<std::size_t>(&entry - entries_.data()));
  }
  return std::exchange(entry.key, std::move(key));
}

DictionaryTable::Entry DictionaryTable::remove(Entry& entry) noexcept {
  Entry removed = std::exchange(entry, Entry{{}, {}, 0, true});  // a gap
  if (++gaps_ * 2 > entries_.size()) {
    std::erase_if(entries_, [](const Entry& each) { return each.isGap; });
    gaps_ = 0;
    fillIndex();
  }
  return removed;
}

// Half of the places stay free, so that searches are short.
void DictionaryTable::makeRoomInIndex() {
  if (index_.empty() ? entries_.size() < kFew : (indexed_ + 1) * 2 <= index_.size()) return;
  std::vector<std::uint32_t> larger(std::bit_ceil((entries_.size() + 1) * 2));
  index_.swap(larger);
  fillIndex();
}

void DictionaryTable::fillIndex() noexcept {
  std::fill(index_.begin(), index_.end(), 0);
  indexed_ = 0;
  for (std::size_t i = 0; i < entries_.size(); ++i)
    if (!entries_[i].isGap) addToIndex(i);
}

void DictionaryTable::addToIndex(std::size_t position) noexcept {
  if (index_.empty()) return;
  const std::size_t mask = index_.size() - 1;
  std::size_t i = entries_[position].hash & mask;
  while (index_[i] != 0) i = (i + 1) & mask;
  index_[i] = static_cast<std::uint32_t>(position + 1);
  ++indexed_;
}

}  // namespace quendal::automation
