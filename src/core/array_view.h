// The elements of an array, while it is locked.
#pragma once

#include <quendal/variant.h>

#include <cstddef>
#include <span>

namespace quendal {

/// A copy of a value as an array of elements of `type` holds it; an object stays a reference.
/// Raises 13, 6, 94 or 424 when the type cannot hold it.
[[nodiscard]] Variant elementOf(const VARIANT& value, VARTYPE type);

/// Type of the elements of the array that a value holds.
constexpr VARTYPE elementTypeOf(const VARIANT& array) noexcept {
  return static_cast<VARTYPE>(array.vt & VT_TYPEMASK);
}

/// Locks an array and reads, takes and stores its elements by position: 0 is the first one
/// whatever the lower bound, and several dimensions count as one row in memory order. While a view
/// lives nobody can change the array's bounds or free it; elements may be replaced by whoever the
/// viewer calls.
class ArrayView {
 public:
  /// `array` is not a reference and holds an allocated array. Raises 13 for elements that are not
  /// automation values (records).
  explicit ArrayView(const VARIANT& array);
  ArrayView(const ArrayView&) = delete;
  ArrayView& operator=(const ArrayView&) = delete;
  ~ArrayView() { SafeArrayUnaccessData(array_); }

  [[nodiscard]] VARTYPE elementType() const noexcept { return type_; }
  [[nodiscard]] std::size_t elementSize() const noexcept { return elementSize_; }
  [[nodiscard]] std::size_t size() const noexcept { return size_; }
  /// The elements as they lie in memory; they may be moved about, but each must stay there once.
  [[nodiscard]] std::span<std::byte> bytes() const noexcept {
    return {cells_, size_ * elementSize_};
  }

  /// Borrowed: good until the element is replaced.
  [[nodiscard]] VARIANT at(std::size_t position) const noexcept;
  /// Takes an element out, leaving Empty, zero or null. The caller owns it.
  [[nodiscard]] VARIANT take(std::size_t position) const noexcept;
  /// Stores what elementOf or take gave into an element that was taken, or is new.
  void put(std::size_t position, const VARIANT& owned) const noexcept;

 private:
  [[nodiscard]] std::byte* cell(std::size_t position) const noexcept {
    return cells_ + position * elementSize_;
  }

  SAFEARRAY* array_;
  VARTYPE type_;
  std::size_t elementSize_;
  std::size_t size_;
  std::byte* cells_ = nullptr;
};

}  // namespace quendal
