#include "arrays/reverse_in_place.h"

#include <algorithm>

#include "arrays/array_error.h"
#include "core/array_view.h"

namespace quendal {
namespace {

// Neither an array nor a record.
constexpr bool isSimple(VARTYPE type) noexcept { return type <= VT_UINT; }

[[noreturn]] void raiseNotSimple() {
  throw AutomationError(kArrayError,
                        u"ReverseArrayInPlace can reverse only arrays of simple data types.");
}

}  // namespace

void reverseArrayInPlace(const VARIANT& array) {
  if (!isSimple(elementTypeOf(array))) raiseNotSimple();
  const ArrayView view(array);
  for (std::size_t i = 0; i < view.size(); ++i) {
    if (!isSimple(view.at(i).vt)) raiseNotSimple();
  }
  std::byte* first = view.bytes().data();
  std::byte* last = first + view.bytes().size();
  for (std::size_t pairs = view.size() / 2; pairs > 0; --pairs) {
    last -= view.elementSize();
    std::swap_ranges(first, first + view.elementSize(), last);
    first += view.elementSize();
  }
}

}  // namespace quendal
