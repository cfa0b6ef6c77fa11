// Filling and reading dictionaries by the shortest way that a system has.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

#include "automation/dictionary_abi.h"

namespace quendal::automation {

/// Makes and fills dictionaries on one thread.
class DictionaryMaker {
 public:
  DictionaryMaker() noexcept;
  DictionaryMaker(const DictionaryMaker&) = delete;
  DictionaryMaker& operator=(const DictionaryMaker&) = delete;
  ~DictionaryMaker();

  /// A new, empty one, which the caller owns. Null when the system cannot create one.
  [[nodiscard]] IDictionary* make() noexcept;

  /// Adds an entry to a dictionary that it made, which takes the item out of its place; failures
  /// take it too. The result is that of IDictionary::Add. Throws std::bad_alloc.
  [[nodiscard]] HRESULT add(IDictionary& dictionary, std::u16string_view key, VARIANT& item);

 private:
  struct Kept;
  std::unique_ptr<Kept> kept_;  // what the system's way needs
};

/// Reads the entries of a dictionary in order.
///
/// What is read stays the dictionary's, or the reader's where the system only gives copies, and is
/// good until the next step or until the dictionary changes. A dictionary that changes meanwhile is
/// read as it is then, or as it was.
class DictionaryReader {
 public:
  /// Of an object, which it shares. Reads nothing when that is no dictionary.
  explicit DictionaryReader(IUnknown& object) noexcept;
  DictionaryReader(const DictionaryReader&) = delete;
  DictionaryReader& operator=(const DictionaryReader&) = delete;
  ~DictionaryReader();

  [[nodiscard]] bool isDictionary() const noexcept { return dictionary_ != nullptr; }

  /// Goes to the next entry: S_OK, S_FALSE at the end, otherwise the dictionary's failure.
  [[nodiscard]] HRESULT next() noexcept;
  /// Of the entry that `next` went to.
  [[nodiscard]] const VARIANT& key() const noexcept { return *key_; }
  [[nodiscard]] const VARIANT& item() const noexcept { return *item_; }

 private:
  [[nodiscard]] HRESULT nextCopied() noexcept;

  IDictionary* dictionary_ = nullptr;
  const void* own_ = nullptr;  // the dictionary as the system's own class, where it is that
  std::size_t position_ = 0;
  const VARIANT* key_ = nullptr;
  const VARIANT* item_ = nullptr;
  SAFEARRAY* keys_ = nullptr;  // copies
  SAFEARRAY* items_ = nullptr;
};

}  // namespace quendal::automation
