// The keyed container of pages, for a system that has none: `Scripting.Dictionary`.
#pragma once

#include <cstdint>

#include "automation/counted.h"
#include "automation/dictionary_abi.h"
#include "automation/posix/dictionary_table.h"
#include "automation/posix/teardown.h"

namespace quendal::automation {

/// Which keys are the same is told in dictionary_key.h. Failures of the members set the thread's
/// error information: 457 for a key that exists, 32811 for one that does not, 5 for a compare mode
/// that cannot be set.
class Dictionary final : public Counted<IDictionary, ISupportErrorInfo>, private Teardown {
 public:
  Dictionary() noexcept { run = &destroyAll; }
  ~Dictionary() override = default;

  /// A new one with one reference, which the caller owns. Null when memory is short.
  [[nodiscard]] static Dictionary* make() noexcept;

  /// Adds an item under a key, whose hash is given, to a dictionary that does not ignore case.
  /// Error 457 when the key exists. Throws std::bad_alloc.
  HRESULT addShared(const SharedKey& key, std::uint32_t hash, OwnedValue&& item);

  /// The object as this class, with a reference that the caller owns; null when it is another.
  [[nodiscard]] static Dictionary* ownOf(IUnknown& object) noexcept;

  /// The first entry at or after a position, which moves there; null at the end. Borrowed: good
  /// until the dictionary changes.
  [[nodiscard]] const DictionaryTable::Entry* entryFrom(std::size_t& position) const noexcept {
    return table_.entryFrom(position);
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
  HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) override;

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags,
                                   DISPPARAMS* params, VARIANT* result, EXCEPINFO* exception,
                                   UINT* argumentError) override;

  HRESULT STDMETHODCALLTYPE putref_Item(VARIANT* key, VARIANT* item) override;
  HRESULT STDMETHODCALLTYPE put_Item(VARIANT* key, VARIANT* item) override;
  HRESULT STDMETHODCALLTYPE get_Item(VARIANT* key, VARIANT* item) override;
  HRESULT STDMETHODCALLTYPE Add(VARIANT* key, VARIANT* item) override;
  HRESULT STDMETHODCALLTYPE get_Count(LONG* count) override;
  HRESULT STDMETHODCALLTYPE Exists(VARIANT* key, VARIANT_BOOL* exists) override;
  HRESULT STDMETHODCALLTYPE Items(VARIANT* items) override;
  HRESULT STDMETHODCALLTYPE put_Key(VARIANT* key, VARIANT* newKey) override;
  HRESULT STDMETHODCALLTYPE Keys(VARIANT* keys) override;
  HRESULT STDMETHODCALLTYPE Remove(VARIANT* key) override;
  HRESULT STDMETHODCALLTYPE RemoveAll() override;
  HRESULT STDMETHODCALLTYPE put_CompareMode(int mode) override;
  HRESULT STDMETHODCALLTYPE get_CompareMode(int* mode) override;
  HRESULT STDMETHODCALLTYPE _NewEnum(IUnknown** enumerator) override;
  HRESULT STDMETHODCALLTYPE get_HashVal(VARIANT*, VARIANT*) override { return E_NOTIMPL; }

 private:
  // A key as a caller passed it. `value` and `key` share its contents.
  struct PassedKey {
    VARIANT value;
    DictionaryKey key;
    std::uint32_t hash = 0;
  };

  void destroy() noexcept override { tearDown(*this); }
  static void destroyAll(Teardown& self) noexcept { delete static_cast<Dictionary*>(&self); }

  HRESULT read(const VARIANT* passed, PassedKey& key) const;
  DictionaryTable::Entry* find(const PassedKey& key) { return table_.find(key.key, key.hash); }
  HRESULT append(const PassedKey& key, OwnedValue&& item);
  enum class Part { Keys, Items };
  HRESULT list(Part part, VARIANT* list) const noexcept;
  HRESULT call(DISPID id, WORD flags, const DISPPARAMS& params, VARIANT* result);

  DictionaryTable table_;
  int compareMode_ = 0;
};

}  // namespace quendal::automation
