#include "arrays/redim.h"

#include <limits>
#include <new>

#include "core/array_view.h"

namespace quendal {
namespace {

ULONG countOf(std::size_t count) {
  if (count > std::numeric_limits<LONG>::max()) throw AutomationError(error_number::kOutOfMemory);
  return static_cast<ULONG>(count);
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
  SAFEARRAYBOUND bound{countOf(count), present.lLbound};
  check(SafeArrayRedim(array, &bound));
}

void redimPreserve(VariantRef& variable, std::int64_t upper) {
  if (upper < 0) throw AutomationError(error_number::kSubscript);
  const std::size_t count = static_cast<std::size_t>(upper) + 1;
  if (SAFEARRAY* array = variable.array()) {
    if (SafeArrayGetDim(array) == 1 && array->rgsabound[0].lLbound != 0)
      throw AutomationError(error_number::kSubscript);
    return resize(array, count);
  }
  const VARTYPE type = elementTypeOf(variable.value());
  SAFEARRAYBOUND bound{countOf(count), 0};
  SAFEARRAY* created = SafeArrayCreate(type, 1, &bound);
  if (created == nullptr) throw std::bad_alloc();
  variable.set(Variant::array(created, type));
}

}  // namespace quendal
