#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

#include "automation/posix/number_text.h"
#include "base/characters.h"

namespace quendal::automation {
namespace {

constexpr UInt128 kLargestMagnitude = ~UInt128{0};
constexpr int kLargestPower = 38;  // 10^38 is the last power of ten that has 128 bits
constexpr int kDecimalPlaces = 28;
constexpr BYTE kDecimalNegative = 0x80;
constexpr std::int64_t kLargestExponent = 1'000'000'000'000;  // beyond any length of text

constexpr auto kPowers = [] {
  std::array<UInt128, kLargestPower + 1> powers{1};
  for (std::size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * 10;
  return powers;
}();

constexpr bool isBlank(char16_t c) noexcept { return isSpace(c) || c == u'\u00A0'; }

// A text that is read from the front.
class Reader {
 public:
  explicit Reader(std::u16string_view text) noexcept : text_(text) {}

  [[nodiscard]] bool atEnd() const noexcept { return text_.empty(); }
  [[nodiscard]] char16_t peek() const noexcept { return text_.empty() ? u'\0' : text_.front(); }
  char16_t next() noexcept {
    const char16_t c = text_.front();
    text_.remove_prefix(1);
    return c;
  }
  bool skip(char16_t c) noexcept {
    if (text_.empty() || text_.front() != c) return false;
    text_.remove_prefix(1);
    return true;
  }
  void skipBlanks() noexcept {
    while (!text_.empty() && isBlank(text_.front())) text_.remove_prefix(1);
  }

 private:
  std::u16string_view text_;
};

// Appends a digit, or drops it once the magnitude is full.
void appendDigit(ExactNumber& number, char16_t digit, bool afterPoint) noexcept {
  const auto value = static_cast<unsigned>(digit - u'0');
  if (number.magnitude <= (kLargestMagnitude - 9) / 10) {
    number.magnitude = number.magnitude * 10 + value;
    if (afterPoint) --number.exponent;
  } else {
    if (value != 0) number.truncated = true;
    if (!afterPoint) ++number.exponent;
  }
}

// Digits, with separators before the point. False when there is no digit.
bool readDigits(Reader& in, ExactNumber& number) noexcept {
  bool any = false;
  while (isDigit(in.peek()) || (any && in.peek() == u',')) {
    const char16_t c = in.next();
    if (c == u',') continue;
    any = true;
    appendDigit(number, c, false);
  }
  if (!in.skip(u'.')) return any;
  while (isDigit(in.peek())) {
    any = true;
    appendDigit(number, in.next(), true);
  }
  return any;
}

bool readExponent(Reader& in, ExactNumber& number) noexcept {
  if (!in.skip(u'e') && !in.skip(u'E')) return true;
  const bool negative = in.skip(u'-');
  if (!negative) static_cast<void>(in.skip(u'+'));
  if (!isDigit(in.peek())) return false;
  std::int64_t exponent = 0;
  while (isDigit(in.peek())) {
    const char16_t digit = in.next();
    if (exponent < kLargestExponent) exponent = exponent * 10 + (digit - u'0');
  }
  number.exponent += negative ? -exponent : exponent;
  return true;
}

std::optional<ExactNumber> readBits(Reader& in) noexcept {
  const char16_t base = asciiLower(in.peek());
  if (base != u'h' && base != u'o') return std::nullopt;
  static_cast<void>(in.next());
  const int bits = base == u'h' ? 4 : 3;
  ExactNumber number;
  number.isBits = true;
  bool any = false;
  for (int digit = hexValue(in.peek()); digit >= 0 && digit < 1 << bits; any = true) {
    // Saturates far above 64 bits, where every conversion overflows.
    if (number.magnitude < UInt128{1} << 100)
      number.magnitude = number.magnitude << bits | static_cast<unsigned>(digit);
    static_cast<void>(in.next());
    digit = hexValue(in.peek());
  }
  in.skipBlanks();
  if (!any || !in.atEnd()) return std::nullopt;
  return number;
}

// magnitude * 10^power; nothing when that has more than 128 bits.
std::optional<UInt128> scaledUp(UInt128 magnitude, std::int64_t power) noexcept {
  if (magnitude == 0) return magnitude;
  if (power > kLargestPower) return std::nullopt;
  const UInt128 factor = kPowers[static_cast<std::size_t>(power)];
  if (magnitude > kLargestMagnitude / factor) return std::nullopt;
  return magnitude * factor;
}

// magnitude / 10^power, rounded half to even.
UInt128 scaledDown(UInt128 magnitude, std::int64_t power, bool truncated) noexcept {
  if (power > kLargestPower) return 0;  // less than half
  const UInt128 divisor = kPowers[static_cast<std::size_t>(power)];
  const UInt128 quotient = magnitude / divisor;
  const UInt128 rest = magnitude % divisor;
  const UInt128 half = divisor / 2;
  const bool up = rest > half || (rest == half && (truncated || quotient % 2 != 0));
  return up ? quotient + 1 : quotient;
}

}  // namespace

std::optional<ExactNumber> parseNumber(std::u16string_view text) noexcept {
  Reader in(text);
  in.skipBlanks();
  if (in.skip(u'&')) return readBits(in);

  ExactNumber number;
  const bool inParentheses = in.skip(u'(');
  bool hasSign = inParentheses;
  number.negative = inParentheses;
  const auto skipSign = [&] {
    if (hasSign || (in.peek() != u'-' && in.peek() != u'+')) return;
    number.negative = in.next() == u'-';
    hasSign = true;
    in.skipBlanks();
  };
  skipSign();
  if (in.skip(u'$')) in.skipBlanks();
  skipSign();
  if (!readDigits(in, number) || !readExponent(in, number)) return std::nullopt;
  in.skipBlanks();
  skipSign();
  if (inParentheses && !in.skip(u')')) return std::nullopt;
  in.skipBlanks();
  if (!in.atEnd()) return std::nullopt;
  return number;
}

std::optional<UInt128> roundTo(const ExactNumber& number, int decimals) noexcept {
  const std::int64_t power = number.exponent + decimals;
  if (power >= 0) return scaledUp(number.magnitude, power);
  return scaledDown(number.magnitude, -power, number.truncated);
}

std::optional<double> toReal(const ExactNumber& number) noexcept {
  std::array<char, 80> buffer;
  std::size_t first = 42;
  std::size_t last = first;
  UInt128 rest = number.magnitude;
  do {
    buffer[--first] = static_cast<char>('0' + static_cast<int>(rest % 10));
    rest /= 10;
  } while (rest != 0);
  std::int64_t exponent = number.exponent;
  if (number.truncated) {  // anything above zero there decides the rounding
    buffer[last++] = '1';
    --exponent;
  }
  buffer[last++] = 'e';
  const auto end = std::to_chars(buffer.data() + last, buffer.data() + buffer.size(), exponent);
  double result = 0;
  const auto read = std::from_chars(buffer.data() + first, end.ptr, result);
  if (read.ec != std::errc()) {
    if (number.exponent > 0) return std::nullopt;
    result = 0;  // too small for any double
  }
  return number.negative ? -result : result;
}

bool isDecimal(const DECIMAL& decimal) noexcept {
  return decimal.scale <= kDecimalPlaces && (decimal.sign & ~kDecimalNegative) == 0;
}

ExactNumber exactOf(const DECIMAL& decimal) noexcept {
  ExactNumber number;
  number.magnitude = UInt128{decimal.Hi32} << 64 | decimal.Lo64;
  number.exponent = -std::int64_t{decimal.scale};
  number.negative = decimal.sign != 0;
  return number;
}

std::optional<DECIMAL> toDecimal(ExactNumber number) noexcept {
  constexpr UInt128 kLargest = (UInt128{1} << 96) - 1;
  DECIMAL decimal{};
  if (number.exponent > 0) {
    const auto scaled = scaledUp(number.magnitude, number.exponent);
    if (!scaled) return std::nullopt;
    number.magnitude = *scaled;
    number.exponent = 0;
  }
  // As many decimals as fit: from the most on, fewer until the digits do.
  std::int64_t places = std::min<std::int64_t>(-number.exponent, kDecimalPlaces);
  auto rounded = roundTo(number, static_cast<int>(places));
  while (places > 0 && (!rounded || *rounded > kLargest)) {
    rounded = roundTo(number, static_cast<int>(--places));
  }
  if (!rounded || *rounded > kLargest) return std::nullopt;
  decimal.scale = static_cast<BYTE>(places);
  decimal.sign = number.negative && *rounded != 0 ? kDecimalNegative : 0;
  decimal.Hi32 = static_cast<ULONG>(*rounded >> 64);
  decimal.Lo64 = static_cast<std::uint64_t>(*rounded);
  return decimal;
}

}  // namespace quendal::automation
