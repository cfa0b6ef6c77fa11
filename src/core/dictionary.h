// A client of the platform's keyed container through its function table.
#pragma once

#include <quendal/object.h>

#include <cstdint>
#include <optional>

#include "automation/dictionary_abi.h"

namespace quendal {

/// Raises a failed call of a dictionary's function table by the number a script knows it under, and
/// takes back what the dictionary left in the thread's error information.
void checkDictionary(HRESULT code);

/// Shares a `Scripting.Dictionary`. Entries keep the order of insertion.
class Dictionary {
 public:
  enum class Compare { Binary = 0, Text = 1 };

  /// A new, empty one. Raises 429 when the platform has none.
  [[nodiscard]] static Dictionary create(Compare compare = Compare::Binary);
  /// The dictionary that an object is; nothing when it is something else.
  [[nodiscard]] static std::optional<Dictionary> from(const Object& object);

  /// Raises 457 for a key that exists.
  void add(const Variant& key, const Variant& item) const;
  /// Adds or replaces.
  void set(const Variant& key, const Variant& item) const;
  /// Empty for a key that does not exist, which this adds, as the platform does.
  [[nodiscard]] Variant item(const Variant& key) const;
  [[nodiscard]] std::int32_t count() const;
  /// A zero-based array of all keys, or items, in order.
  [[nodiscard]] Variant keys() const;
  [[nodiscard]] Variant items() const;
  [[nodiscard]] bool contains(const Variant& key) const;
  /// Raises 32811 for a key that does not exist.
  void remove(const Variant& key) const;
  void removeAll() const;

  [[nodiscard]] Object object() const { return object_; }
  [[nodiscard]] automation::IDictionary* table() const noexcept {
    return static_cast<automation::IDictionary*>(object_.dispatch());
  }

 private:
  explicit Dictionary(Object object) noexcept : object_(std::move(object)) {}

  Object object_;  // holds the IDictionary pointer itself
};

}  // namespace quendal
