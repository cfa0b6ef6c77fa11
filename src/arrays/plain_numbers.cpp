#include "arrays/plain_numbers.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "arrays/radix_sort.h"
#include "core/compare.h"

namespace quendal {
namespace {

constexpr bool isPlain(VARTYPE type) noexcept {
  return type == VT_I4 || type == VT_R8 || type == VT_I2 || type == VT_DATE || type == VT_BOOL ||
         type == VT_UI1 || type == VT_R4;
}

// Not-a-number and the negative zero have places that their bits do not tell.
bool hasItsPlace(double number) noexcept {
  return number == number && !(number == 0 && std::signbit(number));
}

void setNumber(VARIANT& value, double number) noexcept {
  switch (value.vt) {
    case VT_I4:
      value.lVal = static_cast<LONG>(number);
      break;
    case VT_I2:
    case VT_BOOL:
      value.iVal = static_cast<std::int16_t>(number);
      break;
    case VT_UI1:
      value.bVal = static_cast<BYTE>(number);
      break;
    case VT_R4:
      value.fltVal = static_cast<float>(number);
      break;
    default:
      value.dblVal = number;
  }
}

}  // namespace

bool sortPlainNumbers(const ArrayView& array, std::size_t first, std::size_t count,
                      bool descending) {
  if (count == 0) return false;
  const VARTYPE type = array.at(first).vt;
  if (!isPlain(type)) return false;
  std::vector<std::uint64_t> keys;
  keys.reserve(count);
  bool isInOrder = true;
  for (std::size_t i = 0; i < count; ++i) {
    const VARIANT value = array.at(first + i);
    if (value.vt != type) return false;
    const double number = numberOf(value).value_or(NumberKey{}).value;
    if (!hasItsPlace(number)) return false;
    const std::uint64_t key = descending ? ~radixKey(number) : radixKey(number);
    isInOrder = isInOrder && (i == 0 || keys.back() <= key);
    keys.push_back(key);
  }
  if (isInOrder) return true;
  sortKeys(keys);
  for (std::size_t i = 0; i < count; ++i) {
    VARIANT value = array.at(first + i);
    setNumber(value, numberOfRadixKey(descending ? ~keys[i] : keys[i]));
    array.put(first + i, value);
  }
  return true;
}

}  // namespace quendal
