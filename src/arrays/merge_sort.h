// A stable sort that needs no consistent order to stay in bounds.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <span>
#include <type_traits>

namespace quendal {
namespace detail {

template <class T, class Less>
void insertionSort(T* first, T* last, const Less& less) {
  for (T* next = first; next != last; ++next) {
    const T item = *next;
    T* hole = next;
    for (; hole != first && less(item, hole[-1]); --hole) *hole = hole[-1];
    *hole = item;
  }
}

/// `scratch` has room for half of the items, rounded down.
template <class T, class Less>
void mergeSortIn(T* items, std::size_t count, T* scratch, const Less& less) {
  constexpr std::size_t kShort = 16;
  if (count <= kShort) return insertionSort(items, items + count, less);
  const std::size_t half = count / 2;
  T* const middle = items + half;
  T* const end = items + count;
  mergeSortIn(items, half, scratch, less);
  mergeSortIn(middle, count - half, scratch, less);
  if (!less(*middle, middle[-1])) return;

  const T* left = scratch;
  const T* const leftEnd = std::copy(items, middle, scratch);
  const T* right = middle;
  T* out = items;
  while (left != leftEnd && right != end) {
    const bool takesRight = less(*right, *left);  // without a jump: it goes either way
    *out++ = *(takesRight ? right : left);
    right += takesRight ? 1 : 0;
    left += takesRight ? 0 : 1;
  }
  std::copy(left, leftEnd, out);
}

}  // namespace detail

/// Sorts by `less`, equal items keeping their order, in at most n log n steps; what is in order,
/// or in the opposite one, takes one pass. Any answers of `less` give some order of the same items,
/// even where they contradict each other, as answers about mixed numbers and texts may. Throws
/// std::bad_alloc before anything is moved.
template <class T, class Less>
void mergeSort(std::span<T> items, const Less& less) {
  static_assert(std::is_trivially_copyable_v<T>);
  if (items.size() < 2) return;
  const auto firstFall = std::ranges::is_sorted_until(items, less);
  if (firstFall == items.end()) return;
  const auto isFall = [&](const T& a, const T& b) { return !less(b, a); };
  if (std::ranges::adjacent_find(items, isFall) == items.end()) {
    std::ranges::reverse(items);  // strictly falling, so nothing equal changes places
    return;
  }
  const auto scratch = std::make_unique_for_overwrite<T[]>(items.size() / 2);
  detail::mergeSortIn(items.data(), items.size(), scratch.get(), less);
}

}  // namespace quendal
