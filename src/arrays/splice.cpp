#include "arrays/splice.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <vector>

#include "arrays/redim.h"
#include "core/array_view.h"

namespace quendal {
namespace {

Variant newArray(std::size_t count) {
  // Not every system refuses a size of more than 32 bits.
  if (count > std::numeric_limits<LONG>::max() / sizeof(VARIANT)) throw std::bad_alloc();
  SAFEARRAYBOUND bound{static_cast<ULONG>(count), 0};
  SAFEARRAY* array = SafeArrayCreate(VT_VARIANT, 1, &bound);
  if (array == nullptr) throw std::bad_alloc();
  return Variant::array(array);
}

void take(const ArrayView& view, ElementRange range, const ArrayView& taken) noexcept {
  for (std::size_t i = 0; i < range.count; ++i) taken.put(i, view.take(range.start + i));
}

void putBack(const ArrayView& view, ElementRange range, const ArrayView& taken) noexcept {
  for (std::size_t i = 0; i < range.count; ++i) view.put(range.start + i, taken.take(i));
}

// Moves the elements between `from` and `end` to `to`; the places they leave become empty. What
// is at their new places must be empty.
void move(const ArrayView& view, std::size_t from, std::size_t end, std::size_t to) noexcept {
  const std::size_t size = view.elementSize();
  std::byte* const elements = view.bytes().data();
  const std::size_t count = end - from;
  std::memmove(elements + to * size, elements + from * size, count * size);
  const std::size_t left = to < from ? std::max(from, to + count) : from;
  const std::size_t leftEnd = to < from ? end : std::min(end, to);
  std::memset(elements + left * size, 0, (leftEnd - left) * size);
}

void fill(const VariantRef& variable, std::size_t start, std::span<Variant> incoming) {
  const ArrayView view(variable.value());
  for (std::size_t i = 0; i < incoming.size(); ++i) view.put(start + i, incoming[i].release());
}

}  // namespace

std::size_t clampedPosition(std::int32_t position, std::size_t size) noexcept {
  const auto end = static_cast<std::int64_t>(size);
  const std::int64_t fromStart = position < 0 ? end + position : position;
  return static_cast<std::size_t>(std::clamp<std::int64_t>(fromStart, 0, end));
}

std::size_t elementCountOf(const VARIANT& array) {
  if (array.parray == nullptr) return 0;
  requireOneDimension(array.parray);
  return array.parray->rgsabound[0].cElements;
}

Variant copyElements(const VARIANT& array, ElementRange range) {
  Variant result = newArray(range.count);
  if (range.count == 0) return result;
  const ArrayView view(array);
  const ArrayView copies(result);
  for (std::size_t i = 0; i < range.count; ++i)
    copies.put(i, Variant::copyOf(view.at(range.start + i)).release());
  return result;
}

Variant spliceElements(VariantRef& variable, ElementRange range, std::span<const VARIANT> values) {
  // Copied before anything moves: the values may be elements of this array.
  std::vector<Variant> incoming;
  incoming.reserve(values.size());
  const VARTYPE type = elementTypeOf(variable.value());
  for (const VARIANT& value : values) incoming.push_back(elementOf(value, type));

  Variant removed = newArray(range.count);
  SAFEARRAY* array = variable.array();
  if (array == nullptr) {
    if (incoming.empty()) return removed;
    redimPreserve(variable, static_cast<std::int64_t>(incoming.size()) - 1);
    fill(variable, 0, incoming);
    return removed;
  }
  const std::size_t size = elementCountOf(variable.value());
  const std::size_t newSize = size - range.count + incoming.size();
  const std::size_t end = range.start + range.count;
  const std::size_t newEnd = range.start + incoming.size();
  if (newSize != size) requireResizable(*array);
  if (newSize > size) resize(array, newSize);
  {
    const ArrayView view(variable.value());
    take(view, range, ArrayView(removed));
    move(view, end, size, newEnd);
  }
  if (newSize < size) {
    try {
      resize(array, newSize);
    } catch (...) {
      const ArrayView view(variable.value());
      move(view, newEnd, newSize, end);
      putBack(view, range, ArrayView(removed));
      throw;
    }
  }
  fill(variable, range.start, incoming);
  return removed;
}

}  // namespace quendal
