#include "automation/posix/dictionary.h"

#include <new>

#include "automation/posix/array_enumerator.h"
#include "automation/posix/strings.h"
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
    info->SetGUID(kIidDictionary);
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

// A key as a caller passed it. `value` and `key` share its contents.
struct PassedKey {
  VARIANT value;
  DictionaryKey key;

  HRESULT read(const VARIANT* passed, const DictionaryTable& table) {
    if (passed == nullptr) return E_POINTER;
    HRESULT result = borrowValue(*passed, value);
    if (SUCCEEDED(result)) result = readKey(value, key);
    if (SUCCEEDED(result)) key.hash = hashOf(key, table.ignoresCase());
    return result;
  }
};

// A copy that goes unless it is given away.
class Copy {
 public:
  Copy() = default;
  Copy(const Copy&) = delete;
  Copy& operator=(const Copy&) = delete;
  ~Copy() { VariantClear(&value_); }

  HRESULT take(const VARIANT& source) noexcept { return VariantCopyInd(&value_, &source); }
  [[nodiscard]] const VARIANT& value() const noexcept { return value_; }
  void given() noexcept { value_ = VARIANT{}; }

 private:
  VARIANT value_{};
};

// An array of one field of each entry.
HRESULT listOf(const DictionaryTable& table, VARIANT DictionaryTable::Entry::*field,
               VARIANT* list) noexcept {
  if (list == nullptr) return E_POINTER;
  *list = VARIANT{};
  SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(table.size()));
  if (array == nullptr) return E_OUTOFMEMORY;
  auto* next = static_cast<VARIANT*>(array->pvData);
  const HRESULT result = table.forEach(
      [&](const DictionaryTable::Entry& entry) { return copyInto(*next++, entry.*field); });
  if (FAILED(result)) {
    SafeArrayDestroy(array);
    return result;
  }
  list->vt = VT_ARRAY | VT_VARIANT;
  list->parray = array;
  return S_OK;
}

/// An array that somebody walks cannot go; whoever would take it out is refused.
bool isLockedArray(const VARIANT& value) noexcept {
  return (value.vt & VT_ARRAY) != 0 && value.parray != nullptr && value.parray->cLocks > 0;
}

}  // namespace

Dictionary* Dictionary::make(std::size_t room) noexcept {
  static_assert(sizeof(Dictionary) % alignof(DictionaryTable::Entry) == 0);
  void* block = std::malloc(sizeof(Dictionary) + room * sizeof(DictionaryTable::Entry));
  return block == nullptr ? nullptr : new (block) Dictionary(room);
}

HRESULT Dictionary::QueryInterface(REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  if (iid == kIidOwnDictionary) {
    *object = this;
  } else if (iid == kIidDictionary || iid == IID_IDispatch || iid == IID_IUnknown) {
    *object = static_cast<IDictionary*>(this);
  } else if (iid == IID_ISupportErrorInfo) {
    *object = static_cast<ISupportErrorInfo*>(this);
  } else {
    *object = nullptr;
    return E_NOINTERFACE;
  }
  AddRef();
  return S_OK;
}

Dictionary* Dictionary::ownOf(IUnknown& object) noexcept {
  void* own = nullptr;
  return SUCCEEDED(object.QueryInterface(kIidOwnDictionary, &own)) ? static_cast<Dictionary*>(own)
                                                                   : nullptr;
}

HRESULT Dictionary::InterfaceSupportsErrorInfo(REFIID iid) {
  return iid == kIidDictionary ? S_OK : S_FALSE;
}

HRESULT Dictionary::addText(BSTR takenKey, VARIANT& takenItem) noexcept {
  const HRESULT result = guarded([&] {
    const bool isHashed = isSharedText(takenKey) && !table_.ignoresCase();
    const std::uint32_t hash =
        isHashed ? hashOfShared(takenKey) : hashOf(textKey(viewOf(takenKey)), table_.ignoresCase());
    DictionaryTable::Entry* entry = table_.appendNewText(takenKey, hash);
    if (entry == nullptr) return fail(kKeyExists);
    entry->item.vt = takenItem.vt;  // its two parts, as they were written a moment ago
    entry->item.llVal = takenItem.llVal;
    takenItem.vt = VT_EMPTY;
    return S_OK;
  });
  if (FAILED(result)) {
    SysFreeString(takenKey);
    VariantClear(&takenItem);
  }
  return result;
}

void Dictionary::reserve(std::size_t count) noexcept {
  static_cast<void>(guarded([&] {
    table_.reserve(count);
    return S_OK;
  }));
}

void Dictionary::trim() noexcept {
  static_cast<void>(guarded([&] {
    table_.trim();
    return S_OK;
  }));
}

HRESULT Dictionary::appendCopy(const DictionaryKey& key, const VARIANT& keyValue,
                               const VARIANT& item) {
  Copy keyCopy;
  Copy itemCopy;
  HRESULT result = keyCopy.take(keyValue);
  if (SUCCEEDED(result)) result = itemCopy.take(item);
  if (FAILED(result)) return result;
  table_.append(key, keyCopy.value(), itemCopy.value());
  keyCopy.given();
  itemCopy.given();
  return S_OK;
}

HRESULT Dictionary::Add(VARIANT* key, VARIANT* item) {
  return guarded([&] {
    PassedKey passed;
    if (item == nullptr) return E_POINTER;
    const HRESULT result = passed.read(key, table_);
    if (FAILED(result)) return result;
    if (table_.find(passed.key) != DictionaryTable::kNone) return fail(kKeyExists);
    return appendCopy(passed.key, passed.value, *item);
  });
}

HRESULT Dictionary::put_Item(VARIANT* key, VARIANT* item) {
  return guarded([&] {
    PassedKey passed;
    if (item == nullptr) return E_POINTER;
    HRESULT result = passed.read(key, table_);
    if (FAILED(result)) return result;
    const std::size_t position = table_.find(passed.key);
    if (position == DictionaryTable::kNone) return appendCopy(passed.key, passed.value, *item);
    if (isLockedArray(table_.at(position).item)) return DISP_E_ARRAYISLOCKED;
    Copy copy;
    result = copy.take(*item);
    if (FAILED(result)) return result;
    VARIANT old = table_.exchangeItem(position, copy.value());
    copy.given();
    VariantClear(&old);
    return S_OK;
  });
}

HRESULT Dictionary::putref_Item(VARIANT* key, VARIANT* item) { return put_Item(key, item); }

HRESULT Dictionary::get_Item(VARIANT* key, VARIANT* item) {
  return guarded([&] {
    PassedKey passed;
    if (item == nullptr) return E_POINTER;
    *item = VARIANT{};
    const HRESULT result = passed.read(key, table_);
    if (FAILED(result)) return result;
    const std::size_t position = table_.find(passed.key);
    if (position == DictionaryTable::kNone) return appendCopy(passed.key, passed.value, VARIANT{});
    return copyInto(*item, table_.at(position).item);
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
    const HRESULT result = passed.read(key, table_);
    if (FAILED(result)) return result;
    if (table_.find(passed.key) != DictionaryTable::kNone) *exists = VARIANT_TRUE;
    return S_OK;
  });
}

HRESULT Dictionary::Items(VARIANT* items) {
  return listOf(table_, &DictionaryTable::Entry::item, items);
}

HRESULT Dictionary::Keys(VARIANT* keys) {
  return listOf(table_, &DictionaryTable::Entry::key, keys);
}

HRESULT Dictionary::put_Key(VARIANT* key, VARIANT* newKey) {
  return guarded([&] {
    PassedKey passed;
    PassedKey renamed;
    HRESULT result = passed.read(key, table_);
    if (SUCCEEDED(result)) result = renamed.read(newKey, table_);
    if (FAILED(result)) return result;
    const std::size_t position = table_.find(passed.key);
    const std::size_t taken = table_.find(renamed.key);
    if (taken != DictionaryTable::kNone && taken != position) return fail(kKeyExists);
    if (position == DictionaryTable::kNone) {  // as the platform's: a new key without an item
      return appendCopy(renamed.key, renamed.value, VARIANT{});
    }
    Copy copy;
    result = copy.take(renamed.value);
    if (FAILED(result)) return result;
    VARIANT old = table_.exchangeKey(position, renamed.key, copy.value());
    copy.given();
    VariantClear(&old);
    return S_OK;
  });
}

HRESULT Dictionary::Remove(VARIANT* key) {
  return guarded([&] {
    PassedKey passed;
    const HRESULT result = passed.read(key, table_);
    if (FAILED(result)) return result;
    const std::size_t position = table_.find(passed.key);
    if (position == DictionaryTable::kNone) return fail(kNotFound);
    if (isLockedArray(table_.at(position).item)) return DISP_E_ARRAYISLOCKED;
    DictionaryTable::Entry removed = table_.remove(position);
    VariantClear(&removed.key);
    VariantClear(&removed.item);
    return S_OK;
  });
}

HRESULT Dictionary::RemoveAll() {
  // Out of the object first: what an item does as it goes may lead back here.
  return guarded([&] {
    for (std::size_t i = 0; const DictionaryTable::Entry* entry = entryFrom(i); ++i)
      if (isLockedArray(entry->item)) return DISP_E_ARRAYISLOCKED;
    const DictionaryTable removed(table_);
    return S_OK;
  });
}

HRESULT Dictionary::put_CompareMode(int mode) {
  if (mode < 0 || table_.size() > 0) return fail(kInvalidCall);
  compareMode_ = mode;
  table_.setIgnoreCase(mode != 0);
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

HRESULT Dictionary::get_HashVal(VARIANT* key, VARIANT* hash) {
  return guarded([&] {
    PassedKey passed;
    if (hash == nullptr) return E_POINTER;
    *hash = VARIANT{};
    const HRESULT result = passed.read(key, table_);
    if (FAILED(result)) return result;
    hash->vt = VT_I4;
    hash->lVal = static_cast<LONG>(passed.key.hash & 0x7FFFFFFFU);
    return S_OK;
  });
}

}  // namespace quendal::automation
