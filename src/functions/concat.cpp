#include "functions/concat.h"

#include <limits>
#include <new>
#include <utility>

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

std::u16string inQuotes(std::u16string_view text, QuoteStyle style) {
  const Quotes quotes = quotesOf(style);
  return std::u16string(quotes.before).append(text).append(quotes.after);
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

std::u16string emptyWithRoom(std::int32_t size) {
  std::u16string text;
  if (static_cast<std::size_t>(size) > text.max_size()) throw std::bad_alloc();
  text.reserve(static_cast<std::size_t>(size));
  return text;
}

}  // namespace

Concat::Concat() {
  clearError();
  clear(0);
}

std::u16string_view Concat::content() const noexcept {
  return std::u16string_view(written_).substr(0, static_cast<std::size_t>(length_));
}

std::u16string Concat::value() { return std::u16string(content()); }

void Concat::setValue(TextRef text) {
  makeBlanks();
  length_ = 0;
  add(text.view());
}

std::u16string Concat::buffer() {
  std::u16string result = emptyWithRoom(bufferSize_);
  result = written_;
  result.resize(static_cast<std::size_t>(bufferSize_), kBlank);
  return result;
}

std::u16string Concat::text(QuoteStyle style) { return inQuotes(content(), style); }

void Concat::clear(std::int32_t totalLength) {
  length_ = 0;
  capacity_ = totalLength != 0 ? totalLength : kFirstCapacity;
  makeBlanks();
}

void Concat::makeBlanks() {
  fitBuffer();
  written_.clear();
}

// Makes the buffer as large as the capacity. Raises 5 for a negative one.
void Concat::fitBuffer() {
  if (capacity_ < 0) throw AutomationError(error_number::kInvalidCall);
  if (capacity_ == bufferSize_) return;
  std::u16string fitting = emptyWithRoom(capacity_);
  fitting.append(written_, 0, static_cast<std::size_t>(capacity_));
  written_ = std::move(fitting);
  bufferSize_ = capacity_;
}

void Concat::trimToSize() {
  // What is left out behind the written characters is blank.
  written_ = std::u16string(trimBlanks(written_));
  length_ = capacity_ = bufferSize_ = static_cast<std::int32_t>(written_.size());
}

// The one place where content grows.
void Concat::add(std::u16string_view piece) {
  const std::int32_t newLength = checkedLength(static_cast<std::size_t>(length_) + piece.size());
  if (newLength > capacity_ || newLength > bufferSize_) growFor(newLength);
  written_.resize(static_cast<std::size_t>(length_));
  written_.append(piece);
  length_ = newLength;
}

void Concat::growFor(std::int32_t newLength) {
  // Doubling alone, from whatever the capacity is. So a builder of capacity 0, which TrimToSize
  // leaves when everything is blank, never gets there: the call does not return. That is how the
  // builder is defined. The volatile copy makes the loop one that a compiler has to run.
  volatile std::int32_t capacity = capacity_;
  while (capacity < newLength) capacity = capacity_ = doubled(capacity);
  fitBuffer();
}

void Concat::append(ArgumentList pieces) {
  for (const VARIANT& argument : pieces) {
    const VARIANT piece = follow(argument);
    if (piece.vt == VT_BSTR)
      add(viewOf(piece.bstrVal));
    else
      add(textOf(piece));
  }
}

void Concat::appendEx(TextRef text, QuoteStyle style) {
  if (style == QuoteStyle::None) return add(text.view());
  add(inQuotes(text.view(), style));
}

void Concat::prepend(TextRef text, std::int16_t index, QuoteStyle style) {
  const std::u16string piece = inQuotes(text.view(), style);
  checkedLength(static_cast<std::size_t>(length_) + piece.size());
  if (index < 0) throw AutomationError(error_number::kInvalidCall);
  if (index == std::numeric_limits<std::int16_t>::max())
    throw AutomationError(error_number::kOverflow);
  if (index > length_) throw AutomationError(error_number::kInvalidCall);
  const std::u16string tail(content().substr(static_cast<std::size_t>(index)));
  fitBuffer();
  length_ = index;
  add(piece);
  add(tail);
}

}  // namespace quendal
