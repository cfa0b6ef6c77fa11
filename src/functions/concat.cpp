#include "functions/concat.h"

#include <algorithm>
#include <limits>
#include <new>

#include "base/copy_characters.h"
#include "base/text.h"
#include "core/apartment.h"

namespace quendal {
namespace {

constexpr std::int32_t kFirstCapacity = 32;
constexpr char16_t kBlank = u' ';

struct Quotes {
  std::u16string_view before;
  std::u16string_view after;
};

// Unknown styles put nothing. The blanks around a sheet reference are deliberate.
Quotes quotesOf(QuoteStyle style) noexcept {
  switch (style) {
    case QuoteStyle::Double:
      return {u"\"", u"\""};
    case QuoteStyle::Single:
      return {u"'", u"'"};
    case QuoteStyle::SquareBrackets:
      return {u"[", u"]"};
    case QuoteStyle::ExcelDateString:
      return {u"#", u"#"};
    case QuoteStyle::SheetReference:
      return {u" [", u"$] "};
    default:
      return {};
  }
}

/// A length as the builder counts it. Raises 6.
std::int32_t checkedLength(std::size_t length) {
  if (length > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()))
    throw AutomationError(error_number::kOverflow);
  return static_cast<std::int32_t>(length);
}

/// Twice a capacity. Raises 6.
std::int32_t doubled(std::int32_t capacity) {
  const std::int64_t result = std::int64_t{capacity} * 2;
  if (result > std::numeric_limits<std::int32_t>::max() ||
      result < std::numeric_limits<std::int32_t>::min())
    throw AutomationError(error_number::kOverflow);
  return static_cast<std::int32_t>(result);
}

}  // namespace

Concat::Concat() {
  clearError();
  clear(0);
}

std::u16string_view Concat::written() const noexcept {
  return {memory_.characters(), static_cast<std::size_t>(written_)};
}

std::u16string_view Concat::content() const noexcept {
  return written().substr(0, static_cast<std::size_t>(length_));
}

std::u16string Concat::value() { return std::u16string(content()); }

void Concat::setValue(TextRef text) {
  makeBlanks();
  length_ = 0;
  add(text.view());
}

std::u16string Concat::buffer() {
  const auto size = static_cast<std::size_t>(bufferSize_);
  std::u16string result;
  if (size > result.max_size()) throw std::bad_alloc();
  result.reserve(size);
  result.assign(written());
  result.resize(size, kBlank);
  return result;
}

std::u16string Concat::text(QuoteStyle style) {
  const Quotes quotes = quotesOf(style);
  std::u16string result;
  result.reserve(quotes.before.size() + content().size() + quotes.after.size());
  return result.append(quotes.before).append(content()).append(quotes.after);
}

void Concat::clear(std::int32_t totalLength) {
  length_ = 0;
  capacity_ = totalLength != 0 ? totalLength : kFirstCapacity;
  makeBlanks();
}

// Puts a buffer of blanks in the old one's place. Raises 5 for a negative capacity.
void Concat::makeBlanks() {
  if (capacity_ < 0) throw AutomationError(error_number::kInvalidCall);
  resizeBuffer(capacity_);
  written_ = 0;
}

void Concat::resizeBuffer(std::int32_t size) {
  if (size != bufferSize_ && !memory_.resize(static_cast<std::size_t>(size)))
    throw std::bad_alloc();
  bufferSize_ = size;
}

void Concat::trimToSize() {
  // What is left out behind the written characters is blank.
  const std::u16string_view trimmed = trimBlanks(written());
  std::copy(trimmed.begin(), trimmed.end(), memory_.characters());
  written_ = length_ = capacity_ = static_cast<std::int32_t>(trimmed.size());
  resizeBuffer(capacity_);
}

// The one place where content grows.
inline void Concat::add(std::u16string_view piece) {
  const std::int32_t newLength = checkedLength(static_cast<std::size_t>(length_) + piece.size());
  if (newLength > capacity_ || newLength > bufferSize_) growFor(newLength);
  copyCharacters(piece.data(), memory_.characters() + length_, piece.size());
  written_ = length_ = newLength;
}

void Concat::growFor(std::int32_t newLength) {
  // Doubling alone, from whatever the capacity is. So a builder of capacity 0, which TrimToSize
  // leaves when everything is blank, never gets there: the call does not return. That is how the
  // builder is defined. The volatile copy makes the loop one that a compiler has to run.
  volatile std::int32_t capacity = capacity_;
  while (capacity < newLength) capacity = capacity_ = doubled(capacity);
  resizeBuffer(capacity_);
}

void Concat::append(ArgumentList pieces) {
  for (const VARIANT& piece : pieces) {
    if (piece.vt == VT_BSTR)
      add(viewOf(piece.bstrVal));
    else
      addTextOf(follow(piece));
  }
}

void Concat::addTextOf(const VARIANT& value) {
  if (value.vt == VT_BSTR)
    add(viewOf(value.bstrVal));
  else
    add(textOf(value));
}

void Concat::appendEx(TextRef text, QuoteStyle style) { add(text.view(), style); }

void Concat::add(std::u16string_view text, QuoteStyle style) {
  const Quotes quotes = quotesOf(style);
  if (quotes.before.empty()) return add(text);
  std::u16string piece;
  piece.reserve(quotes.before.size() + text.size() + quotes.after.size());
  add(piece.append(quotes.before).append(text).append(quotes.after));
}

void Concat::prepend(TextRef text, std::int16_t index, QuoteStyle style) {
  const Quotes quotes = quotesOf(style);
  checkedLength(static_cast<std::size_t>(length_) + quotes.before.size() + text.view().size() +
                quotes.after.size());
  if (index < 0) throw AutomationError(error_number::kInvalidCall);
  if (index == std::numeric_limits<std::int16_t>::max())
    throw AutomationError(error_number::kOverflow);
  if (index > length_) throw AutomationError(error_number::kInvalidCall);
  if (capacity_ < 0) throw AutomationError(error_number::kInvalidCall);
  const std::u16string tail(content().substr(static_cast<std::size_t>(index)));
  resizeBuffer(capacity_);
  written_ = length_ = index;
  add(text.view(), style);
  add(tail);
}

}  // namespace quendal
