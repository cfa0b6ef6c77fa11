#include "arrays/value_order.h"

#include <algorithm>
#include <limits>
#include <string>
#include <string_view>

#include "arrays/merge_sort.h"
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

  [[nodiscard]] std::size_t size() const noexcept { return count_; }
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
NumberRecord numberRecord(const VARIANT& value, std::size_t index) {
  const NumberKey key = numberOf(value).value_or(NumberKey{});
  const double number =
      key.value == key.value ? key.value : -std::numeric_limits<double>::infinity();
  return {number, key.fine, static_cast<std::uint32_t>(index)};
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

TextRecord textRecord(std::u16string_view text, std::size_t index) noexcept {
  std::uint64_t start = 0;
  for (std::size_t i = 0; i < kStartUnits; ++i)
    start = start << 16 | (i < text.size() ? text[i] : char16_t{0});
  return {start, text.data(), static_cast<std::uint32_t>(text.size()),
          static_cast<std::uint32_t>(index)};
}

bool isLess(const TextRecord& a, const TextRecord& b) noexcept {
  if (a.start != b.start) return a.start < b.start;
  if (std::min(a.size, b.size) <= kStartUnits) return a.size < b.size;
  return std::u16string_view(a.units, a.size).substr(kStartUnits) <
         std::u16string_view(b.units, b.size).substr(kStartUnits);
}

/// What compares as a number beside a number and as a text beside a text.
struct MixedRecord {
  NumberRecord number;
  TextRecord text;
  bool isNumber;
  std::uint32_t index;
};

bool isLess(const MixedRecord& a, const MixedRecord& b) noexcept {
  return a.isNumber && b.isNumber ? isLess(a.number, b.number) : isLess(a.text, b.text);
}

/// The texts of all values as they are compared. Where they are not the values' own, they stand
/// one after another in `keys_`.
class TextKeys {
 public:
  TextKeys(const PlainValues& values, CompareMode mode, bool hasNumbers) {
    texts_.reserve(values.size());
    if (mode == CompareMode::Binary && !hasNumbers) {
      for (std::size_t i = 0; i < values.size(); ++i) texts_.push_back(ownText(values.at(i)));
      return;
    }
    std::vector<std::size_t> ends;
    ends.reserve(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
      appendKey(values.at(i), mode);
      ends.push_back(keys_.size());
    }
    std::size_t start = 0;
    for (const std::size_t end : ends) {
      texts_.push_back(std::u16string_view(keys_).substr(start, end - start));
      start = end;
    }
  }

  [[nodiscard]] TextRecord record(std::size_t i) const noexcept { return textRecord(texts_[i], i); }

 private:
  static std::u16string_view ownText(const VARIANT& value) noexcept {
    return value.vt == VT_BSTR ? viewOf(value.bstrVal) : std::u16string_view();
  }

  void appendKey(const VARIANT& value, CompareMode mode) {
    const bool isOwn = value.vt == VT_BSTR || value.vt == VT_EMPTY;
    const std::u16string made = isOwn ? std::u16string() : textOf(value);
    const std::u16string_view text = isOwn ? ownText(value) : made;
    if (mode == CompareMode::Binary) {
      keys_ += text;
    } else {
      platform::appendSortKey(text, keys_);
    }
  }

  std::u16string keys_;
  std::vector<std::u16string_view> texts_;
};

template <class MakeRecord>
std::vector<std::uint32_t> sorted(std::size_t count, bool descending,
                                  const MakeRecord& makeRecord) {
  using Record = decltype(makeRecord(std::size_t{}));
  std::vector<Record> records;
  records.reserve(count);
  for (std::size_t i = 0; i < count; ++i) records.push_back(makeRecord(i));
  const std::span<Record> all(records);
  if (descending) {
    mergeSort(all, [](const Record& a, const Record& b) { return isLess(b, a); });
  } else {
    mergeSort(all, [](const Record& a, const Record& b) { return isLess(a, b); });
  }
  std::vector<std::uint32_t> order(count);
  std::ranges::transform(records, order.begin(), &Record::index);
  return order;
}

}  // namespace

std::vector<std::uint32_t> orderOf(const ArrayView& values, std::size_t first, std::size_t count,
                                   const SortOrder& order) {
  if (count < 2) return std::vector<std::uint32_t>(count, 0);
  const PlainValues plain(values, first, count);
  bool hasNumbers = false;
  bool hasTexts = false;
  for (std::size_t i = 0; i < count; ++i) {
    const Kind kind = kindOf(plain.at(i));
    hasNumbers = hasNumbers || kind == Kind::Number;
    hasTexts = hasTexts || kind == Kind::Text;
  }
  if (!hasTexts) {
    return sorted(count, order.descending,
                  [&](std::size_t i) { return numberRecord(plain.at(i), i); });
  }
  const TextKeys texts(plain, order.mode, hasNumbers);
  if (!hasNumbers) {
    return sorted(count, order.descending, [&](std::size_t i) { return texts.record(i); });
  }
  return sorted(count, order.descending, [&](std::size_t i) {
    const VARIANT value = plain.at(i);
    return MixedRecord{numberRecord(value, i), texts.record(i), value.vt != VT_BSTR,
                       static_cast<std::uint32_t>(i)};
  });
}

}  // namespace quendal
