// When two keys of a dictionary are the same.
//
// Numbers of every type, dates and Booleans among them, are the same when their values are: 1,
// 1.0, #12/31/1899# are one key, True is -1. Text is the same when its characters are, or their
// lower case where the dictionary compares so; text is never the same as a number. Objects are the
// same when they are one object. Empty is the same as Empty only, Null as Null only. Arrays and
// error values are no keys.
#pragma once

#include <quendal/automation.h>

#include <cstdint>
#include <string_view>

namespace quendal::automation {

/// A key in a form that compares. It shares the text of the value it was made of.
struct DictionaryKey {
  enum class Kind : std::uint8_t { Empty, Null, Text, Integer, Real, Object };

  Kind kind = Kind::Empty;
  std::u16string_view text;
  std::int64_t integer = 0;  // of whole numbers, whatever their type
  double real = 0;           // of all other numbers
  const void* object = nullptr;
  std::uint32_t hash = 0;  // as the dictionary that is asked compares
};

/// Reads a value that is not a reference as a key. DISP_E_TYPEMISMATCH for what is no key.
[[nodiscard]] HRESULT readKey(const VARIANT& value, DictionaryKey& key) noexcept;

/// A key of text.
[[nodiscard]] inline DictionaryKey textKey(std::u16string_view text) noexcept {
  DictionaryKey key;
  key.kind = DictionaryKey::Kind::Text;
  key.text = text;
  return key;
}

/// True when a key is the same as one that is stored as `value`. Comparing without case can throw
/// std::bad_alloc.
[[nodiscard]] bool isSameKey(const DictionaryKey& key, const VARIANT& value, bool ignoreCase);

/// A hash that keys which are the same share. Nobody outside knows what goes into it, so that texts
/// with one hash cannot be made up by whoever sends them.
[[nodiscard]] std::uint32_t hashOf(const DictionaryKey& key, bool ignoreCase);
[[nodiscard]] std::uint32_t hashOfText(std::u16string_view text) noexcept;

}  // namespace quendal::automation
