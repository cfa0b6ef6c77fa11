#include "arrays/value_order.h"

#include <algorithm>
#include <limits>
#include <string>
#include <string_view>

#include "core/compare.h"
#include "platform/sort_key.h"

namespace quendal {
namespace {

enum class Kind { Empty, Number, Text };

Kind kindOf(const VARIANT& value) {
  if (value.vt == VT_EMPTY) return Kind::Empty;
  if (value.vt == VT_BSTR) return Kind::Text;
  if (value.vt == VT_NULL) throw AutomationError(error_number::kInvalidNull);
  if (numberOf(value)) return Kind::Number;
  throw AutomationError(error_number::kTypeMismatch);
}

/// The values, each object replaced by its default value.
class PlainValues {
 public:
  PlainValues(const ArrayView& values, std::size_t first, std::size_t count)
      : values_(values), first_(first), count_(count) {
    bool hasObjects = false;
    for (std::size_t i = 0; i < count; ++i)
      hasObjects = hasObjects || isObject(values.at(first + i));
    if (hasObjects) resolve();
  }

  [[nodiscard]] VARIANT at(std::size_t i) const noexcept {
    if (!copies_.empty()) return copies_[i];
    return values_.at(first_ + i);
  }

 private:
  // Objects are asked when every value has been copied: what they do may change the array.
  void resolve() {
    copies_.reserve(count_);
    for (std::size_t i = 0; i < count_; ++i) {
      const VARIANT value = values_.at(first_ + i);
      if (!isObject(value)) static_cast<void>(kindOf(value));  // no copies of arrays
      copies_.push_back(Variant::copyOf(value));
    }
    for (Variant& value : copies_) {
      if (isObject(value)) value = plainValueOf(value);
    }
  }

  const ArrayView& values_;
  std::size_t first_;
  std::size_t count_;
  std::vector<Variant> copies_;  // empty when there are no objects
};

struct NumberRecord {
  double value;
  std::int32_t fine;
  std::uint32_t index;
};

// Numbers that are none come first, as one.
NumberRecord numberRecord(const VARIANT& value, std::uint32_t index) {
  const NumberKey key = numberOf(value).value_or(NumberKey{});
  const double number =
      key.value == key.value ? key.value : -std::numeric_limits<double>::infinity();
  return {number, key.fine, index};
}

bool isLess(const NumberRecord& a, const NumberRecord& b) noexcept {
  return a.value == b.value ? a.fine < b.fine : a.value < b.value;
}

/// A text with its first units at hand, where most comparisons end.
struct TextRecord {
  std::uint64_t start;  // the first four units, padded with 0
  const char16_t* units;
  std::uint32_t size;
  std::uint32_t index;
};

constexpr std::size_t kStartUnits = 4;

TextRecord textRecord(std::u16string_view text, std::uint32_t index) noexcept {
  std::uint64_t start = 0;
  for (std::size_t i = 0; i < kStartUnits; ++i)
    start = start << 16 | (i < text.size() ? text[i] : char16_t{0});
  return {start, text.data(), static_cast<std::uint32_t>(text.size()), index};
}

bool isLess(const TextRecord& a, const TextRecord& b) noexcept {
  if (a.start != b.start) return a.start < b.start;
  if (std::min(a.size, b.size) <= kStartUnits) return a.size < b.size;
  return std::u16string_view(a.units, a.size).substr(kStartUnits) <
         std::u16string_view(b.units, b.size).substr(kStartUnits);
}

using Positions = std::vector<std::uint32_t>;

/// Texts as they are compared. Where they are not the values' own, they stand one after another in
/// `keys_`.
class TextKeys {
 public:
  TextKeys(const PlainValues& values, const Positions& positions, CompareMode mode) {
    texts_.reserve(positions.size());
    if (mode == CompareMode::Binary) {
      for (const std::uint32_t i : positions) texts_.push_back(ownText(values.at(i)));
      return;
    }
    std::vector<std::size_t> ends;
    ends.reserve(positions.size());
    for (const std::uint32_t i : positions) {
      platform::appendSortKey(ownText(values.at(i)), keys_);
      ends.push_back(keys_.size());
    }
    std::size_t start = 0;
    for (const std::size_t end : ends) {
      texts_.push_back(std::u16string_view(keys_).substr(start, end - start));
      start = end;
    }
  }

  [[nodiscard]] std::u16string_view at(std::size_t i) const noexcept { return texts_[i]; }

 private:
  static std::u16string_view ownText(const VARIANT& value) noexcept {
    return value.vt == VT_BSTR ? viewOf(value.bstrVal) : std::u16string_view();
  }

  std::u16string keys_;
  std::vector<std::u16string_view> texts_;
};

/// Appends the positions in the order of their records; `recordAt` makes the one of each place.
template <class RecordAt>
void appendSorted(std::size_t count, bool descending, const RecordAt& recordAt, Positions& order) {
  using Record = decltype(recordAt(std::size_t{}));
  std::vector<Record> records;
  records.reserve(count);
  for (std::size_t i = 0; i < count; ++i) records.push_back(recordAt(i));
  const auto less = [descending](const Record& a, const Record& b) {
    return descending ? isLess(b, a) : isLess(a, b);
  };
  if (!std::ranges::is_sorted(records, less)) std::ranges::stable_sort(records, less);
  for (const Record& record : records) order.push_back(record.index);
}

}  // namespace

std::vector<std::uint32_t> orderOf(const ArrayView& values, std::size_t first, std::size_t count,
                                   const SortOrder& order) {
  if (count < 2) return Positions(count, 0);
  const PlainValues plain(values, first, count);
  std::vector<Kind> kinds;
  kinds.reserve(count);
  for (std::size_t i = 0; i < count; ++i) kinds.push_back(kindOf(plain.at(i)));
  const bool hasNumbers = std::ranges::find(kinds, Kind::Number) != kinds.end();
  Positions numbers;
  Positions texts;
  for (std::uint32_t i = 0; i < count; ++i) {
    const bool isNumber = hasNumbers && kinds[i] != Kind::Text;
    (isNumber ? numbers : texts).push_back(i);
  }

  const TextKeys keys(plain, texts, order.mode);
  Positions sorted;
  sorted.reserve(count);
  const auto appendTexts = [&] {
    appendSorted(
        texts.size(), order.descending,
        [&](std::size_t i) { return textRecord(keys.at(i), texts[i]); }, sorted);
  };
  if (order.descending) appendTexts();
  appendSorted(
      numbers.size(), order.descending,
      [&](std::size_t i) { return numberRecord(plain.at(numbers[i]), numbers[i]); }, sorted);
  if (!order.descending) appendTexts();
  return sorted;
}

}  // namespace quendal
