#include "arrays/sort_in_place.h"

#include <cstring>
#include <span>

#include "arrays/array_error.h"

namespace quendal {
namespace {

[[noreturn]] void refuse(std::u16string_view message) {
  throw AutomationError(kArrayError, message);
}

/// Puts cells in order: cell i becomes what cell order[i] was.
void permute(std::span<std::byte> cells, std::size_t size, std::span<const std::uint32_t> order) {
  const std::vector<std::byte> former(cells.begin(), cells.end());
  std::byte* cell = cells.data();
  for (const std::uint32_t from : order) {
    std::memcpy(cell, former.data() + from * size, size);
    cell += size;
  }
}

}  // namespace

void qSortInPlace(const VARIANT& array, std::int32_t lowerBound, std::int32_t upperBound,
                  const SortOrder& order) {
  if ((array.vt & VT_ARRAY) == 0) refuse(u"The InputArray parameter is not an array.");
  if (array.parray == nullptr) refuse(u"The InputArray is an unallocated array.");
  if (SafeArrayGetDim(array.parray) != 1) {
    refuse(
        u"The InputArray is multi-dimensional. "
        u"QSortInPlace works only on single-dimensional arrays.");
  }
  if (order.mode != CompareMode::Binary && order.mode != CompareMode::Text)
    refuse(u"The CompareMode parameter is neither binary (0) nor text (1).");
  // Counted here: the upper bound of an array without elements can lie beyond 32 bits.
  const std::int64_t ownLower = array.parray->rgsabound[0].lLbound;
  const std::int64_t ownUpper = ownLower + array.parray->rgsabound[0].cElements - 1;
  const std::int64_t lower = lowerBound == kOwnBound ? ownLower : lowerBound;
  const std::int64_t upper = upperBound == kOwnBound ? ownUpper : upperBound;
  const bool isWhole = lower == ownLower && upper == ownUpper;  // which may have no elements
  if (!isWhole && (lower < ownLower || lower > ownUpper))
    refuse(u"The LB parameter is outside the bounds of the InputArray.");
  if (!isWhole && (upper < ownLower || upper > ownUpper))
    refuse(u"The UB parameter is outside the bounds of the InputArray.");
  if (!isWhole && lower > upper) refuse(u"The LB parameter is greater than the UB parameter.");

  const ArrayView view(array);
  const auto first = static_cast<std::size_t>(lower - ownLower);
  const auto count = static_cast<std::size_t>(upper - lower + 1);
  const std::size_t size = view.elementSize();
  permute(view.bytes().subspan(first * size, count * size), size,
          orderOf(view, first, count, order));
}

}  // namespace quendal
