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
#include <variant>

namespace quendal::automation {

enum class EmptyKey : char {};
enum class NullKey : char {};
/// The bits of a number that is not whole, so that not-a-number is found again.
enum class RealKey : std::uint64_t {};

/// A key in a form that compares. It shares the text of the value it was made of. Whole numbers are
/// std::int64_t, objects the one pointer by which they are known.
using DictionaryKey =
    std::variant<EmptyKey, NullKey, std::u16string_view, std::int64_t, RealKey, const void*>;

/// Reads a value that is not a reference as a key. DISP_E_TYPEMISMATCH for what is no key.
[[nodiscard]] HRESULT readKey(const VARIANT& value, DictionaryKey& key) noexcept;

/// Throws std::bad_alloc when it compares without case.
[[nodiscard]] bool isSameKey(const DictionaryKey& a, const DictionaryKey& b, bool ignoreCase);

/// A hash that keys which are the same share. Nobody outside knows what goes into it, so that texts
/// with one hash cannot be made up by whoever sends them.
[[nodiscard]] std::uint32_t hashOf(const DictionaryKey& key, bool ignoreCase);

}  // namespace quendal::automation
