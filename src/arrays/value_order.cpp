#include "arrays/value_order.h"

#include <algorithm>
#include <deque>
#include <limits>
#include <string>
#include <string_view>

#include "core/compare.h"
#include "platform/sort_key.h"

namespace quendal {
namespace {

void requireComparable(const VARIANT& value) {
  if (value.vt == VT_NULL) throw AutomationError(error_number::kInvalidNull);
  if (value.vt != VT_EMPTY && value.vt != VT_BSTR && !numberOf(value))
    throw AutomationError(error_number::kTypeMismatch);
}

/// The values, each object replaced by its default value.
class PlainValues {
 public:
  PlainValues(const ArrayView& values, std::size_t first, std::size_t count)
      : values_(values), first_(first) {
    bool hasObjects = false;
    for (std::size_t i = first; i < first + count; ++i) {
      const VARIANT value = values.at(i);
      if (isObject(value))
        hasObjects = true;
      else
        requireComparable(value);
    }
    if (!hasObjects) return;
    // Objects are asked when every value has been copied: what they do may change the array.
    for (std::size_t i = first; i < first + count; ++i)
      copies_.push_back(Variant::copyOf(values.at(i)));
    for (Variant& value : copies_) {
      if (isObject(value)) value = plainValueOf(value);
      requireComparable(value);
    }
  }

  [[nodiscard]] VARIANT at(std::size_t i) const noexcept {
    if (!copies_.empty()) return copies_[i];
    return values_.at(first_ + i);
  }

 private:
  const ArrayView& values_;
  std::size_t first_;
  std::vector<Variant> copies_;  // empty when there are no objects
};

struct NumberRecord {
  double value;
  std::int32_t fine;
  std::uint32_t position;
};

// Numbers that are none come first, as one.
NumberRecord numberRecord(const VARIANT& value, std::uint32_t position) {
  const NumberKey key = numberOf(value).value_or(NumberKey{});
  const bool isNumber = key.value == key.value;
  return {isNumber ? key.value : -std::numeric_limits<double>::infinity(), key.fine, position};
}

bool isLess(const NumberRecord& a, const NumberRecord& b) noexcept {
  return a.value == b.value ? a.fine < b.fine : a.value < b.value;
}

struct TextRecord {
  std::u16string_view text;
  std::uint32_t position;
};

bool isLess(const TextRecord& a, const TextRecord& b) noexcept { return a.text < b.text; }

using Positions = std::vector<std::uint32_t>;

template <class Record>
void appendSorted(std::vector<Record>& records, bool descending, Positions& sorted) {
  std::ranges::stable_sort(records, [descending](const Record& a, const Record& b) {
    return descending ? isLess(b, a) : isLess(a, b);
  });
  for (const Record& record : records) sorted.push_back(record.position);
}

}  // namespace

std::vector<std::uint32_t> orderOf(const ArrayView& values, std::size_t first, std::size_t count,
                                   const SortOrder& order) {
  if (count < 2) return Positions(count);
  const PlainValues plain(values, first, count);
  bool hasNumbers = false;
  for (std::size_t i = 0; i < count && !hasNumbers; ++i)
    hasNumbers = numberOf(plain.at(i)).has_value();

  std::vector<NumberRecord> numbers;
  std::vector<TextRecord> texts;
  std::deque<std::u16string> sortKeys;  // of the texts, where they are not compared themselves
  if (hasNumbers) numbers.reserve(count);
  for (std::uint32_t i = 0; i < count; ++i) {
    const VARIANT value = plain.at(i);
    if (hasNumbers && value.vt != VT_BSTR) {
      numbers.push_back(numberRecord(value, i));
      continue;
    }
    std::u16string_view text = value.vt == VT_BSTR ? viewOf(value.bstrVal) : std::u16string_view();
    if (order.mode == CompareMode::Text) {
      platform::appendSortKey(text, sortKeys.emplace_back());
      text = sortKeys.back();
    }
    texts.push_back({text, i});
  }

  Positions sorted;
  sorted.reserve(count);
  if (order.descending) appendSorted(texts, true, sorted);
  appendSorted(numbers, order.descending, sorted);
  if (!order.descending) appendSorted(texts, false, sorted);
  return sorted;
}

}  // namespace quendal
