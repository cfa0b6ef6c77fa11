#include "base/number_pattern.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string_view>

namespace quendal {
namespace {

constexpr std::uint32_t kDecimalItem = 0x0E;
constexpr std::uint32_t kThousandItem = 0x0F;
constexpr std::uint32_t kGroupingItem = 0x10;
constexpr std::uint32_t kNegativeSignItem = 0x51;
constexpr int kSignificantDigits = 15;  // all that the runtime's numbers show

class ItemText {
 public:
  ItemText(LocaleItemReader locale, std::uint32_t item) : length_(locale(item, text_)) {}
  [[nodiscard]] std::u16string_view view() const noexcept { return {text_.data(), length_}; }

 private:
  std::array<char16_t, 100> text_;
  std::size_t length_;
};

// The decimal digits of a number that is not negative, rounded half up; the last `decimals` of
// them are the fraction, and at least one stands before it.
std::string roundedDigits(double magnitude, std::size_t decimals) {
  std::array<char, 32> buffer;
  const char* const end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                        std::chars_format::scientific, kSignificantDigits - 1)
                              .ptr;
  const std::string_view text(buffer.data(), end);  // "d.dddddddddddddde+ddd"
  const std::size_t mark = text.find('e');
  std::string digits(1, text[0]);
  digits += text.substr(2, mark - 2);
  int exponent = 0;
  std::from_chars(text.data() + mark + (text[mark + 1] == '+' ? 2 : 1), end, exponent);
  if (exponent < 0) {
    digits.insert(0, static_cast<std::size_t>(-exponent), '0');
    exponent = 0;
  }

  const std::size_t kept = static_cast<std::size_t>(exponent) + 1 + decimals;
  const bool up = kept < digits.size() && digits[kept] >= '5';
  digits.resize(kept, '0');
  if (!up) return digits;
  for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
    if (*digit != '9') {
      ++*digit;
      return digits;
    }
    *digit = '0';
  }
  return digits.insert(0, 1, '1');
}

// How many digits the group has that comes after `done` groups, counted from the decimal point:
// "3;2;0" is 3, 2, 2 and so on, "3" is 3 and then no more groups. 0 when there are no more.
std::size_t groupSize(std::u16string_view grouping, std::size_t done) noexcept {
  std::size_t size = 0;
  for (std::size_t at = 0; at < grouping.size(); at += 2, --done) {
    const auto digit = static_cast<std::size_t>(grouping[at] - u'0');
    if (digit == 0 || digit > 9) return size;  // the one before repeats
    size = digit;
    if (done == 0) return size;
  }
  return 0;
}

std::u16string grouped(std::string_view digits, std::u16string_view grouping,
                       std::u16string_view separator) {
  std::u16string out(digits.begin(), digits.end());
  std::size_t place = out.size();
  for (std::size_t groups = 0;; ++groups) {
    const std::size_t size = groupSize(grouping, groups);
    if (size == 0 || place <= size) return out;
    place -= size;
    out.insert(place, separator);
  }
}

}  // namespace

std::u16string formatNumberPattern(double value, int decimals, LocaleItemReader locale) {
  if (!std::isfinite(value)) return {};
  const auto fraction = static_cast<std::size_t>(std::max(decimals, 0));
  const std::string digits = roundedDigits(std::fabs(value), fraction);
  const std::string_view whole(digits.data(), digits.size() - fraction);

  const bool negative = value < 0 && digits.find_first_not_of('0') != std::string::npos;
  std::u16string out(negative ? ItemText(locale, kNegativeSignItem).view() : u"");
  out += grouped(whole, ItemText(locale, kGroupingItem).view(),
                 ItemText(locale, kThousandItem).view());
  if (fraction != 0) {
    out += ItemText(locale, kDecimalItem).view();
    out.append(digits.begin() + static_cast<std::ptrdiff_t>(whole.size()), digits.end());
  }
  return out;
}

}  // namespace quendal
