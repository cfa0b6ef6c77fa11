#include "arrays/array_functions.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "arrays/array_error.h"
#include "arrays/redim.h"
#include "arrays/sort_in_place.h"
#include "arrays/splice.h"
#include "core/apartment.h"
#include "core/array_view.h"
#include "core/compare.h"
#include "platform/messages.h"

namespace quendal {
namespace {

void requireArray(const VariantRef& variable, std::u16string_view member) {
  const VARIANT value = variable.value();
  if ((value.vt & VT_ARRAY) != 0) return;
  std::u16string description = u"Array.";
  description += member;
  description += u": [TypeName=";
  description += typeNameOf(value);
  description += u"] is not an array";
  throw AutomationError(kArrayError, description);
}

using BoundQuery = decltype(&SafeArrayGetUBound);

// A bound as a 32-bit integer; of an unallocated array the 16-bit integer -1.
Variant boundOf(const VariantRef& variable, BoundQuery query) {
  SAFEARRAY* array = variable.value().parray;
  LONG bound = 0;
  if (array == nullptr || FAILED(query(array, 1, &bound))) return Variant(std::int16_t{-1});
  return Variant(static_cast<std::int32_t>(bound));
}

std::int64_t upperBoundOf(const VariantRef& variable) {
  return int32Of(boundOf(variable, SafeArrayGetUBound));
}

// The array of a variable, to be changed in place. It is read once for each call: what an object
// does when it is asked or let go may replace the variable, but not free a locked array. Raises 9
// for an unallocated array and for several dimensions.
VARIANT changeable(VariantRef& variable) {
  if (variable.array() == nullptr) throw AutomationError(error_number::kSubscript);
  const VARIANT array = variable.value();
  requireOneDimension(array.parray);
  return array;
}

// Position of the element with an index. Raises 9 when there is none.
std::size_t positionOf(const VARIANT& array, std::int64_t index) {
  const SAFEARRAYBOUND& bound = array.parray->rgsabound[0];
  if (index < bound.lLbound || index - bound.lLbound >= bound.cElements)
    throw AutomationError(error_number::kSubscript);
  return static_cast<std::size_t>(index - bound.lLbound);
}

// Replaces an element, by an object as a reference.
void store(const ArrayView& view, std::size_t position, const VARIANT& value) {
  const VARIANT present = view.at(position);
  if ((present.vt & VT_ARRAY) != 0 && present.parray != nullptr && present.parray->cLocks > 0)
    check(DISP_E_ARRAYISLOCKED);  // an array that is being walked
  Variant element = elementOf(value, view.elementType());
  // The former element goes last: what an object does as it goes may lead back here.
  const Variant former = Variant::attach(view.take(position));
  view.put(position, element.release());
}

// Takes out the element at `start` to `former`, gives it, an object by its default value, and moves
// the elements after it down by one. The last place becomes empty.
Variant takeFirst(const VARIANT& array, std::size_t start, Variant& former) {
  const ArrayView view(array);
  Variant result;
  const VARIANT first = view.at(start);
  // Deliberate: no other function asks an object that it moves for its default value.
  if (isObject(first)) result = plainValueOf(first);
  former = Variant::attach(view.take(start));
  std::byte* const place = view.bytes().data() + start * view.elementSize();
  const std::size_t rest = (view.size() - start - 1) * view.elementSize();
  std::memmove(place, place + view.elementSize(), rest);
  std::memset(place + rest, 0, view.elementSize());
  if (!isObject(first)) result = std::move(former);
  return result;
}

// For each index from the last but one down to 1: array(index - 1) = array(index).
void copyDown(const ArrayView& view, std::int64_t lower) {
  const std::int64_t upper = lower + static_cast<std::int64_t>(view.size()) - 1;
  for (std::int64_t i = upper - 1; i >= 1 && i > lower; --i) {
    const auto position = static_cast<std::size_t>(i - lower);
    store(view, position - 1, view.at(position));
  }
}

// Raises 5002 for elements that are arrays or records.
void requireSimple(VARTYPE elementType) {
  if (elementType > VT_UINT)
    throw AutomationError(kArrayError,
                          u"ReverseArrayInPlace can reverse only arrays of simple data types.");
}

}  // namespace

Variant ArrayFunctions::getUBound(VariantRef& array) {
  requireArray(array, u"GetUBound");
  return boundOf(array, SafeArrayGetUBound);
}

Variant ArrayFunctions::getLBound(VariantRef& array) {
  requireArray(array, u"GetLBound");
  return boundOf(array, SafeArrayGetLBound);
}

void ArrayFunctions::push(VariantRef& array, const VARIANT& value) {
  requireArray(array, u"Push");
  ignoringErrors([&] {
    const Variant added = Variant::copyOf(value);  // it may be the array itself
    const std::int64_t n = upperBoundOf(array) + 1;
    redimPreserve(array, n);
    const VARIANT own = changeable(array);
    store(ArrayView(own), positionOf(own, n), added);
  });
}

Variant ArrayFunctions::pop(VariantRef& array) {
  requireArray(array, u"Pop");
  Variant result;
  ignoringErrors([&] {
    const std::int64_t n = upperBoundOf(array);
    if (n < 0) return;
    const VARIANT own = changeable(array);
    const std::size_t last = positionOf(own, n);
    Variant element = Variant::attach(ArrayView(own).take(last));
    try {
      redimPreserve(own.parray, n - 1);
    } catch (...) {  // refused: the array keeps its element
      const ArrayView view(own);
      view.put(last, element.release());
      result = Variant::copyOf(view.at(last));
      throw;
    }
    result = std::move(element);
  });
  return result;
}

// Nothing is trapped here: what fails reaches the page.
Variant ArrayFunctions::shift(VariantRef& array) {
  requireArray(array, u"Shift");
  const std::int64_t n = upperBoundOf(array);
  if (n < 0) return {};
  const VARIANT own = changeable(array);
  const std::size_t start = positionOf(own, 0);
  if (n == 0) {
    // Deliberate: an array of one element gives an unallocated array, not its element.
    array.eraseArray();
    return Variant::array(nullptr);
  }
  Variant former;  // goes when the array has its new size
  Variant result = takeFirst(own, start, former);
  try {
    redimPreserve(own.parray, n - 1);
  } catch (const AutomationError&) {  // refused: the last element stands at both places
    const ArrayView view(own);
    store(view, view.size() - 1, view.at(view.size() - 2));
    throw;
  }
  return result;
}

// Deliberate: the array does not grow, the first element is overwritten.
void ArrayFunctions::unshift(VariantRef& array, const VARIANT& value) {
  requireArray(array, u"Unshift");
  ignoringErrors([&] {
    const Variant first = Variant::copyOf(value);  // it may be the array itself
    const VARIANT own = changeable(array);
    const ArrayView view(own);
    copyDown(view, own.parray->rgsabound[0].lLbound);
    store(view, positionOf(own, 0), first);
  });
}

Variant ArrayFunctions::slice(VariantRef& array, Boolean remove, std::int32_t start,
                              std::int32_t end) {
  requireArray(array, u"Slice");
  const std::size_t size = elementCountOf(array.value());
  const std::size_t first = clampedPosition(start, size);
  const ElementRange range{first, std::max(first, clampedPosition(end, size)) - first};
  return isTrue(remove) ? spliceElements(array, range, {}) : copyElements(array.value(), range);
}

Variant ArrayFunctions::splice(VariantRef& array, std::int32_t offset, std::int32_t length,
                               ArgumentList values) {
  requireArray(array, u"Splice");
  const std::size_t size = elementCountOf(array.value());
  const std::size_t first = clampedPosition(offset, size);
  const auto wanted = static_cast<std::size_t>(std::max(length, 0));
  return spliceElements(array, {first, std::min(wanted, size - first)}, values);
}

void ArrayFunctions::reverse(VariantRef& array) {
  requireArray(array, u"Reverse");
  if (elementCountOf(array.value()) == 0) return;
  array.array();
  requireSimple(elementTypeOf(array.value()));
  const ArrayView view(array.value());
  for (std::size_t i = 0; i < view.size(); ++i) requireSimple(view.at(i).vt);
  const std::size_t size = view.elementSize();
  std::byte* first = view.bytes().data();
  std::byte* last = first + view.bytes().size();
  for (std::size_t pairs = view.size() / 2; pairs > 0; --pairs) {
    last -= size;
    std::swap_ranges(first, first + size, last);
    first += size;
  }
}

Boolean ArrayFunctions::sort(VariantRef& array, std::int32_t lowerBound, std::int32_t upperBound,
                             Boolean descending, std::int32_t compareMode, Boolean noAlerts) {
  requireArray(array, u"Sort");
  try {
    array.array();
    qSortInPlace(array.value(), lowerBound, upperBound,
                 {static_cast<CompareMode>(compareMode), isTrue(descending)});
    return Boolean::True;
  } catch (const AutomationError& error) {
    if (!isTrue(noAlerts)) platform::systemLog(error.description());
    return Boolean::False;
  }
}

}  // namespace quendal
