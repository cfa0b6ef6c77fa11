#include "automation/dictionary_access.h"

#include <quendal/text.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <utility>

#include "automation/posix/dictionary.h"

namespace quendal::automation {

// Objects of one text have the same keys again and again: those share the key that is kept here.
struct DictionaryMaker::Kept {
  std::array<SharedKey, 512> latest;  // of the keys with the same last bits of the hash
};

DictionaryMaker::DictionaryMaker() noexcept = default;
DictionaryMaker::~DictionaryMaker() = default;

IDictionary* DictionaryMaker::make() noexcept { return Dictionary::make(); }

HRESULT DictionaryMaker::add(IDictionary& dictionary, std::u16string_view key, VARIANT& item) {
  if (kept_ == nullptr) kept_ = std::make_unique<Kept>();
  const std::uint32_t hash = hashOf(key, false);
  SharedKey& latest = kept_->latest[hash % kept_->latest.size()];
  if (latest == nullptr || !std::ranges::equal(viewOf(latest->bstrVal), key)) {
    OwnedValue made;
    made.bstrVal = newBstr(key);
    made.vt = VT_BSTR;
    latest = std::make_shared<const OwnedValue>(std::move(made));
  }
  return static_cast<Dictionary&>(dictionary)
      .addShared(latest, hash, OwnedValue(std::exchange(item, VARIANT{})));
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
  key_ = entry->key.get();
  item_ = &entry->item;
  ++position_;
  return S_OK;
}

}  // namespace quendal::automation
