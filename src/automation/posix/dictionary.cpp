#include "automation/posix/dictionary.h"

#include <quendal/text.h>

#include <cstdint>
#include <memory>
#include <utility>

#include "automation/posix/array_enumerator.h"
#include "automation/posix/variants.h"
#include "automation/reference.h"

namespace quendal::automation {
namespace {

// Answered by this class alone.
constexpr IID kIidOwnDictionary{
    0x5C0E4B5A, 0x6F1D, 0x4E0B, {0x9D, 0x57, 0x3B, 0x8A, 0x61, 0xC4, 0x2F, 0x90}};

constexpr int kInvalidCall = 5;
constexpr int kKeyExists = 457;
constexpr int kNotFound = 32811;

// Sets the thread's error information and returns the error's number as a page sees it.
HRESULT fail(int number) noexcept {
  const char16_t* description = u"Invalid procedure call or argument";
  if (number == kKeyExists) {
    description = u"This key is already associated with an element of this collection";
  } else if (number == kNotFound) {
    description = u"Element not found";
  }
  ICreateErrorInfo* created = nullptr;
  if (SUCCEEDED(CreateErrorInfo(&created))) {
    const Reference<ICreateErrorInfo> info(created);
    info->SetSource(const_cast<LPOLESTR>(u"Scripting.Dictionary"));  // they only read the texts
    info->SetDescription(const_cast<LPOLESTR>(description));
    void* error = nullptr;
    if (SUCCEEDED(info->QueryInterface(IID_IErrorInfo, &error))) {
      const Reference<IErrorInfo> current(static_cast<IErrorInfo*>(error));
      SetErrorInfo(0, current.get());
    }
  }
  return hresult(0x800A0000U + static_cast<std::uint32_t>(number));
}

HRESULT take(const VARIANT* passed, OwnedValue& copy) noexcept {
  return passed == nullptr ? E_POINTER : VariantCopyInd(&copy, passed);
}

SharedKey shared(OwnedValue&& key) { return std::make_shared<const OwnedValue>(std::move(key)); }

// An array that somebody walks cannot go; whoever would take it out is refused.
bool isLockedArray(const VARIANT& value) noexcept {
  return (value.vt & VT_ARRAY) != 0 && value.parray != nullptr && value.parray->cLocks > 0;
}

}  // namespace

HRESULT Dictionary::QueryInterface(REFIID iid, void** object) {
  auto* own = static_cast<IDictionary*>(this);
  return answer(iid,
                {{kIidDictionary, own},
                 {IID_IDispatch, own},
                 {kIidOwnDictionary, own},
                 {IID_ISupportErrorInfo, static_cast<ISupportErrorInfo*>(this)}},
                object);
}

Dictionary* Dictionary::make() noexcept {
  Dictionary* made = nullptr;
  static_cast<void>(guarded([&] {
    made = makeCounted<Dictionary>().release();
    return S_OK;
  }));
  return made;
}

Dictionary* Dictionary::ownOf(IUnknown& object) noexcept {
  void* own = nullptr;
  return SUCCEEDED(object.QueryInterface(kIidOwnDictionary, &own))
             ? static_cast<Dictionary*>(static_cast<IDictionary*>(own))
             : nullptr;
}

HRESULT Dictionary::InterfaceSupportsErrorInfo(REFIID iid) {
  return iid == kIidDictionary ? S_OK : S_FALSE;
}

HRESULT Dictionary::addShared(const SharedKey& key, std::uint32_t hash, OwnedValue&& item) {
  if (table_.find(viewOf(key->bstrVal), hash) != nullptr) return fail(kKeyExists);
  table_.append({std::move(item), key, hash});
  return S_OK;
}

HRESULT Dictionary::read(const VARIANT* passed, PassedKey& key) const {
  if (passed == nullptr) return E_POINTER;
  HRESULT result = borrowValue(*passed, key.value);
  if (SUCCEEDED(result)) result = readKey(key.value, key.key);
  if (SUCCEEDED(result)) key.hash = hashOf(key.key, table_.ignoresCase());
  return result;
}

HRESULT Dictionary::append(const PassedKey& key, OwnedValue&& item) {
  OwnedValue copy;
  const HRESULT result = copyInto(copy, key.value);
  if (SUCCEEDED(result)) table_.append({std::move(item), shared(std::move(copy)), key.hash});
  return result;
}

HRESULT Dictionary::Add(VARIANT* key, VARIANT* item) {
  return guarded([&] {
    PassedKey passed;
    OwnedValue copy;
    HRESULT result = take(item, copy);  // first: what it calls may change the key
    if (SUCCEEDED(result)) result = read(key, passed);
    if (FAILED(result)) return result;
    return find(passed) == nullptr ? append(passed, std::move(copy)) : fail(kKeyExists);
  });
}

HRESULT Dictionary::put_Item(VARIANT* key, VARIANT* item) {
  return guarded([&] {
    PassedKey passed;
    OwnedValue copy;
    HRESULT result = take(item, copy);  // first: what it calls may change the key
    if (SUCCEEDED(result)) result = read(key, passed);
    if (FAILED(result)) return result;
    DictionaryTable::Entry* entry = find(passed);
    if (entry == nullptr) return append(passed, std::move(copy));
    if (isLockedArray(entry->item)) return DISP_E_ARRAYISLOCKED;
    std::swap(entry->item, copy);  // the old one goes when the new one is in place
    return S_OK;
  });
}

HRESULT Dictionary::putref_Item(VARIANT* key, VARIANT* item) { return put_Item(key, item); }

HRESULT Dictionary::get_Item(VARIANT* key, VARIANT* item) {
  return guarded([&] {
    PassedKey passed;
    if (item == nullptr) return E_POINTER;
    *item = VARIANT{};
    const HRESULT result = read(key, passed);
    if (FAILED(result)) return result;
    const DictionaryTable::Entry* entry = find(passed);
    return entry == nullptr ? append(passed, {}) : copyInto(*item, entry->item);
  });
}

HRESULT Dictionary::get_Count(LONG* count) {
  if (count == nullptr) return E_POINTER;
  *count = static_cast<LONG>(table_.size());
  return S_OK;
}

HRESULT Dictionary::Exists(VARIANT* key, VARIANT_BOOL* exists) {
  return guarded([&] {
    PassedKey passed;
    if (exists == nullptr) return E_POINTER;
    *exists = VARIANT_FALSE;
    const HRESULT result = read(key, passed);
    if (FAILED(result)) return result;
    if (find(passed) != nullptr) *exists = VARIANT_TRUE;
    return S_OK;
  });
}

HRESULT Dictionary::list(Part part, VARIANT* list) const noexcept {
  if (list == nullptr) return E_POINTER;
  *list = VARIANT{};
  OwnedValue made;
  made.parray = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(table_.size()));
  if (made.parray == nullptr) return E_OUTOFMEMORY;
  made.vt = VT_ARRAY | VT_VARIANT;
  auto* next = static_cast<VARIANT*>(made.parray->pvData);
  for (std::size_t i = 0; const DictionaryTable::Entry* entry = entryFrom(i); ++i) {
    const HRESULT result = copyInto(*next++, part == Part::Keys ? *entry->key : entry->item);
    if (FAILED(result)) return result;
  }
  std::swap<VARIANT>(*list, made);
  return S_OK;
}

HRESULT Dictionary::Items(VARIANT* items) { return list(Part::Items, items); }

HRESULT Dictionary::Keys(VARIANT* keys) { return list(Part::Keys, keys); }

HRESULT Dictionary::put_Key(VARIANT* key, VARIANT* newKey) {
  return guarded([&] {
    PassedKey passed;
    PassedKey renamed;
    OwnedValue copy;
    HRESULT result = take(newKey, copy);
    if (SUCCEEDED(result)) result = read(&copy, renamed);
    if (SUCCEEDED(result)) result = read(key, passed);
    if (FAILED(result)) return result;
    DictionaryTable::Entry* entry = find(passed);
    const DictionaryTable::Entry* taken = find(renamed);
    if (taken != nullptr && taken != entry) return fail(kKeyExists);
    // As the platform's: renaming what is not there adds the new key without an item.
    if (entry == nullptr) return append(renamed, {});
    const SharedKey old = table_.rename(*entry, shared(std::move(copy)), renamed.hash);
    return S_OK;
  });
}

HRESULT Dictionary::Remove(VARIANT* key) {
  return guarded([&] {
    PassedKey passed;
    const HRESULT result = read(key, passed);
    if (FAILED(result)) return result;
    DictionaryTable::Entry* entry = find(passed);
    if (entry == nullptr) return fail(kNotFound);
    if (isLockedArray(entry->item)) return DISP_E_ARRAYISLOCKED;
    const DictionaryTable::Entry removed = table_.remove(*entry);
    return S_OK;
  });
}

HRESULT Dictionary::RemoveAll() {
  for (std::size_t i = 0; const DictionaryTable::Entry* entry = entryFrom(i); ++i)
    if (isLockedArray(entry->item)) return DISP_E_ARRAYISLOCKED;
  // Out of the object first: what an item does as it goes may lead back here.
  const DictionaryTable removed = std::exchange(table_, DictionaryTable(table_.ignoresCase()));
  return S_OK;
}

HRESULT Dictionary::put_CompareMode(int mode) {
  if (mode < 0 || table_.size() > 0) return fail(kInvalidCall);
  compareMode_ = mode;
  table_ = DictionaryTable(mode != 0);
  return S_OK;
}

HRESULT Dictionary::get_CompareMode(int* mode) {
  if (mode == nullptr) return E_POINTER;
  *mode = compareMode_;
  return S_OK;
}

HRESULT Dictionary::_NewEnum(IUnknown** enumerator) {
  if (enumerator == nullptr) return E_POINTER;
  *enumerator = nullptr;
  VARIANT keys{};
  const HRESULT result = Keys(&keys);
  return FAILED(result) ? result : enumerateArray(keys.parray, enumerator);
}

}  // namespace quendal::automation
