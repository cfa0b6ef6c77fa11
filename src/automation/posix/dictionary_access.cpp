#include "automation/dictionary_access.h"

#include <algorithm>

#include "automation/posix/dictionary.h"
#include "automation/posix/dictionary_key.h"
#include "automation/posix/strings.h"

namespace quendal::automation {

BSTR newKey(std::u16string_view text) noexcept { return newSharedText(text, hashOfText(text)); }

BSTR shareKey(BSTR key) noexcept { return shareText(key); }

struct DictionaryMaker::Kept {};  // nothing

DictionaryMaker::DictionaryMaker() noexcept = default;
DictionaryMaker::~DictionaryMaker() = default;

IDictionary* DictionaryMaker::make(std::size_t entries) noexcept {
  // Entries that do not come cost memory, so there is room for few in the dictionary itself.
  constexpr std::size_t kMostInside = 16;
  Dictionary* dictionary = Dictionary::make(std::clamp<std::size_t>(entries, 1, kMostInside));
  if (dictionary != nullptr) dictionary->reserve(entries);
  return dictionary;
}

HRESULT DictionaryMaker::add(IDictionary& dictionary, BSTR takenKey, VARIANT& takenItem) noexcept {
  return static_cast<Dictionary&>(dictionary).addText(takenKey, takenItem);
}

void DictionaryMaker::finish(IDictionary& dictionary) noexcept {
  static_cast<Dictionary&>(dictionary).trim();
}

DictionaryReader::DictionaryReader(IUnknown& object) noexcept {
  if (Dictionary* own = Dictionary::ownOf(object)) {
    dictionary_ = own;
    own_ = own;
    return;
  }
  void* found = nullptr;
  if (SUCCEEDED(object.QueryInterface(kIidDictionary, &found)))
    dictionary_ = static_cast<IDictionary*>(found);
}

HRESULT DictionaryReader::next() noexcept {
  if (own_ == nullptr) return nextCopied();
  const auto* entry = static_cast<const Dictionary*>(own_)->entryFrom(position_);
  if (entry == nullptr) return S_FALSE;
  key_ = &entry->key;
  item_ = &entry->item;
  ++position_;
  return S_OK;
}

}  // namespace quendal::automation
