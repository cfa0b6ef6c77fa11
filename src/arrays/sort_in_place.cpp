#include "arrays/sort_in_place.h"

#include <array>
#include <cstring>
#include <utility>

#include "arrays/array_error.h"
#include "arrays/plain_numbers.h"

namespace quendal {
namespace {

[[noreturn]] void refuse(std::u16string_view message) {
  throw AutomationError(kArrayError, message);
}

/// Puts cells in order: cell i becomes what cell order[i] was. Each cell moves once, round the
/// rings that the order consists of; `order` is used up. A constant size makes each move a few
/// instructions; 0 stands for a size known only now.
template <std::size_t kSize>
void permute(std::byte* cells, std::span<std::uint32_t> order, std::size_t size) noexcept {
  if constexpr (kSize != 0) size = kSize;
  std::array<std::byte, sizeof(VARIANT)> held;  // no cell is larger
  for (std::uint32_t start = 0; start < order.size(); ++start) {
    if (order[start] == start) continue;
    std::memcpy(held.data(), cells + start * size, size);
    std::uint32_t hole = start;
    for (;;) {
      const std::uint32_t from = std::exchange(order[hole], hole);
      if (from == start) break;
      std::memcpy(cells + hole * size, cells + from * size, size);
      hole = from;
    }
    std::memcpy(cells + hole * size, held.data(), size);
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
  if (sortPlainNumbers(view, first, count, order.descending)) return;
  std::vector<std::uint32_t> sorted = orderOf(view, first, count, order);
  std::byte* const cells = view.bytes().data() + first * view.elementSize();
  if (view.elementSize() == sizeof(VARIANT)) {
    permute<sizeof(VARIANT)>(cells, sorted, sizeof(VARIANT));
  } else {
    permute<0>(cells, sorted, view.elementSize());
  }
}

}  // namespace quendal
