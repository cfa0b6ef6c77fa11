#include "support/script_object.h"

#include <new>

namespace quendal::test {

Variant arrayOf(const std::vector<Variant>& elements) {
  SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(elements.size()));
  if (array == nullptr) throw std::bad_alloc();
  Variant result = Variant::array(array);
  void* data = nullptr;
  check(SafeArrayAccessData(array, &data));
  auto* next = static_cast<VARIANT*>(data);
  for (const Variant& element : elements) *next++ = Variant(element).release();
  check(SafeArrayUnaccessData(array));
  return result;
}

}  // namespace quendal::test
