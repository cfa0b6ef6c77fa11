// Numbers of values and as text, in the form of an English (United States) locale, and exact
// decimal arithmetic between the types.
#pragma once

#include <quendal/automation.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace quendal::automation {

using UInt128 = unsigned __int128;

/// The number magnitude * 10^exponent, negated if `negative`.
struct ExactNumber {
  UInt128 magnitude = 0;
  std::int64_t exponent = 0;
  bool negative = false;
  bool truncated = false;  // digits other than 0 were dropped after those of the magnitude
  bool isBits = false;     // from hexadecimal or octal text: a bit pattern, not a quantity
};

/// Reads a number: blanks around it, a sign before or after, "$" before, parentheses for negative,
/// thousands separators, decimals, an exponent; or "&H" and "&O" with a bit pattern of at most 64
/// bits. Nothing for any other text.
[[nodiscard]] std::optional<ExactNumber> parseNumber(std::u16string_view text) noexcept;

/// Magnitude of the number in units of 10^-decimals, rounded half to even. Nothing when it has
/// more than 128 bits.
[[nodiscard]] std::optional<UInt128> roundTo(const ExactNumber& number, int decimals) noexcept;

/// The nearest double; nothing when there is none that large.
[[nodiscard]] std::optional<double> toReal(const ExactNumber& number) noexcept;

/// False for what only its maker takes for a decimal: too many places, or an unknown sign.
[[nodiscard]] bool isDecimal(const DECIMAL& decimal) noexcept;

[[nodiscard]] ExactNumber exactOf(const DECIMAL& decimal) noexcept;

/// Nothing when the number has more than 96 bits before the point. Digits after the 28th decimal
/// or beyond the 96 bits are rounded off.
[[nodiscard]] std::optional<DECIMAL> toDecimal(ExactNumber number) noexcept;

/// The number that a value stands for: exact, or a double.
struct Number {
  ExactNumber exact;
  double real = 0;
  int realDigits = 0;  // significant decimal digits of `real`; 0 when the number is exact

  [[nodiscard]] bool isExact() const noexcept { return realDigits == 0; }
};

constexpr int kRealDigits = 15;
constexpr int kSingleDigits = 7;
constexpr int kCurrencyDecimals = 4;

/// Of numbers, dates, Booleans, Empty and text that is a number; nothing for any other value.
[[nodiscard]] std::optional<Number> numberOf(const VARIANT& value) noexcept;

/// The nearest double; nothing when there is none that large.
[[nodiscard]] std::optional<double> realOf(const Number& number) noexcept;

/// A number's text; long enough for any.
struct NumberText {
  std::array<char16_t, 48> characters;
  std::size_t length = 0;

  [[nodiscard]] std::u16string_view view() const noexcept { return {characters.data(), length}; }
};

/// With at most `digits` significant digits, 15 for a double and 7 for a single. Plain while that
/// takes no more than `digits` digits before the point, or after it for a number below 1; otherwise
/// scientific ("1.5E+20", "3.33333333333333E-02").
[[nodiscard]] NumberText realText(double value, int digits) noexcept;

/// Plain digits without trailing zeros after the point: for integers, currency and decimals, whose
/// exponent is from 0 down to -28.
[[nodiscard]] NumberText exactText(const ExactNumber& number) noexcept;

[[nodiscard]] inline NumberText textOf(const Number& number) noexcept {
  return number.isExact() ? exactText(number.exact) : realText(number.real, number.realDigits);
}

}  // namespace quendal::automation
