#include "arrays/redim.h"

#include <limits>
#include <new>

#include "core/array_view.h"

namespace quendal {
namespace {

// Raises 7 for a number of elements that no memory holds, 9 when the upper bound is too large.
SAFEARRAYBOUND boundsFrom(LONG lower, std::size_t count) {
  constexpr std::size_t kLargest = std::numeric_limits<LONG>::max();
  if (count > kLargest) throw AutomationError(error_number::kOutOfMemory);
  const auto upper = std::int64_t{lower} + static_cast<std::int64_t>(count) - 1;
  if (upper > static_cast<std::int64_t>(kLargest)) throw AutomationError(error_number::kSubscript);
  return {static_cast<ULONG>(count), lower};
}

}  // namespace

void requireOneDimension(SAFEARRAY* array) {
  if (SafeArrayGetDim(array) != 1) throw AutomationError(error_number::kSubscript);
}

void requireResizable(const SAFEARRAY& array) {
  if (isFixed(array) || array.cLocks > 0) check(DISP_E_ARRAYISLOCKED);
}

void resize(SAFEARRAY* array, std::size_t count) {
  requireOneDimension(array);
  const SAFEARRAYBOUND& present = array->rgsabound[0];
  if (present.cElements == count) return;
  requireResizable(*array);
  SAFEARRAYBOUND bound = boundsFrom(present.lLbound, count);
  check(SafeArrayRedim(array, &bound));
}

void redimPreserve(SAFEARRAY* array, std::int64_t upper) {
  const bool hasOtherBound = SafeArrayGetDim(array) == 1 && array->rgsabound[0].lLbound != 0;
  if (upper < 0 || hasOtherBound) throw AutomationError(error_number::kSubscript);
  resize(array, static_cast<std::size_t>(upper) + 1);
}

void redimPreserve(VariantRef& variable, std::int64_t upper) {
  if (SAFEARRAY* array = variable.array()) return redimPreserve(array, upper);
  const VARTYPE type = elementTypeOf(variable.value());
  SAFEARRAYBOUND bound = boundsFrom(0, static_cast<std::size_t>(upper) + 1);
  SAFEARRAY* created = SafeArrayCreate(type, 1, &bound);
  if (created == nullptr) throw std::bad_alloc();
  variable.set(Variant::array(created, type));
}

}  // namespace quendal
