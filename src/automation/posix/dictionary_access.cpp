#include "automation/dictionary_access.h"

#include "automation/posix/dictionary.h"

namespace quendal::automation {

struct DictionaryMaker::Kept {};  // nothing

DictionaryMaker::DictionaryMaker() noexcept = default;
DictionaryMaker::~DictionaryMaker() = default;

IDictionary* DictionaryMaker::make() noexcept { return Dictionary::make(); }

HRESULT DictionaryMaker::add(IDictionary& dictionary, BSTR takenKey, VARIANT& takenItem) noexcept {
  return static_cast<Dictionary&>(dictionary).addText(takenKey, takenItem);
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
