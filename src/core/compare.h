// The order of values, as a page's "<" and ">" see it.
#pragma once

#include <quendal/variant.h>

#include <compare>
#include <cstdint>
#include <optional>

namespace quendal {

/// A number of any type, for comparing: the nearest double, and what 64-bit integers and currency
/// lose by that. By value first, then by `fine`, numbers are in their exact order (a decimal only
/// to double precision).
struct NumberKey {
  double value;
  std::int32_t fine;

  friend std::partial_ordering operator<=>(const NumberKey& a, const NumberKey& b) noexcept {
    if (a.value == b.value) return a.fine <=> b.fine;
    return a.value <=> b.value;
  }
  friend bool operator==(const NumberKey&, const NumberKey&) = default;
};

/// The number that a value is, Boolean, Date and currency included; nothing for Empty, text and
/// everything else. `value` is not a reference.
[[nodiscard]] std::optional<NumberKey> numberOf(const VARIANT& value);

/// The value, or the default value of the object that it holds. Raises 91 for Nothing, 438 for an
/// object without one or with one that is an object again, and whatever the object raises.
[[nodiscard]] Variant plainValueOf(const VARIANT& value);

/// Two numbers by value, two texts by their UTF-16 units, a number before any text; Empty is 0 or
/// no text, whichever the other one is; an object is its default value. Unordered when either is
/// Null or not a number (the floating-point one). The caller owns both: what an object does as it
/// is asked may change where they came from. Raises 13 for arrays and error values and as
/// plainValueOf.
[[nodiscard]] std::partial_ordering compareValues(const VARIANT& a, const VARIANT& b);

}  // namespace quendal
