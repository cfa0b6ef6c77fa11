#include "core/array_view.h"

#include <quendal/object.h>

#include <cstring>

#include "automation/element_size.h"

namespace quendal {
namespace {

std::size_t countOf(const SAFEARRAY& array) noexcept {
  std::size_t count = array.cDims == 0 ? 0 : 1;
  for (USHORT i = 0; i < array.cDims; ++i) count *= array.rgsabound[i].cElements;
  return count;
}

}  // namespace

Variant elementOf(const VARIANT& value, VARTYPE type) {
  const VARIANT source = follow(value);
  if (type == VT_VARIANT || source.vt == type) return Variant::copyOf(source);
  if (type == VT_DISPATCH) return Variant(Object::from(source));
  if (type == VT_UNKNOWN) {
    if (!isObject(source)) throw AutomationError(error_number::kObjectRequired);
    Variant reference = Variant::copyOf(source);
    reference.vt = VT_UNKNOWN;
    return reference;
  }
  // An object is never turned into its default value on its way into an array.
  if (isObject(source)) throw AutomationError(error_number::kTypeMismatch);
  return converted(source, type);
}

ArrayView::ArrayView(const VARIANT& array)
    : array_(array.parray),
      // The value's own tag: not every maker of arrays notes the element type in the array.
      type_(elementTypeOf(array)),
      elementSize_(automation::elementSize(type_)),
      size_(countOf(*array_)) {
  if (elementSize_ == 0 || array_->cbElements != elementSize_)
    throw AutomationError(error_number::kTypeMismatch);
  void* data = nullptr;
  check(SafeArrayAccessData(array_, &data));
  cells_ = static_cast<std::byte*>(data);
}

VARIANT ArrayView::at(std::size_t position) const noexcept {
  VARIANT value{};
  if (type_ == VT_VARIANT) {
    std::memcpy(&value, cell(position), sizeof(value));
    return value;
  }
  void* target = type_ == VT_DECIMAL ? static_cast<void*>(&value.decVal) : &value.llVal;
  std::memcpy(target, cell(position), elementSize_);
  value.vt = type_;
  return value;
}

VARIANT ArrayView::take(std::size_t position) const noexcept {
  const VARIANT value = at(position);
  std::memset(cell(position), 0, elementSize_);
  return value;
}

void ArrayView::put(std::size_t position, const VARIANT& owned) const noexcept {
  if (type_ == VT_VARIANT) {
    std::memcpy(cell(position), &owned, sizeof(owned));
    return;
  }
  const void* source = type_ == VT_DECIMAL ? static_cast<const void*>(&owned.decVal) : &owned.llVal;
  std::memcpy(cell(position), source, elementSize_);
}

}  // namespace quendal
