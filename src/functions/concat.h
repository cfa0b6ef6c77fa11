// `Concat`: a growable text buffer for pages that build long texts piece by piece.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/class_description.h"
#include "core/enumerations.h"
#include "core/parameters.h"

namespace quendal {

/// A buffer of `bufferLength` characters of which the first `length` are the content and the rest
/// are blanks. It grows by doubling. Sizes are 32-bit: what would need more raises 6.
class Concat {
 public:
  static constexpr std::u16string_view kClassName = u"Concat";

  Concat();

  [[nodiscard]] std::u16string value();
  /// Replaces the content, keeping the capacity.
  void setValue(TextRef text);
  /// The whole buffer, spare blanks included.
  [[nodiscard]] std::u16string buffer();
  [[nodiscard]] std::u16string text(QuoteStyle style);
  [[nodiscard]] std::int32_t length() { return length_; }
  [[nodiscard]] std::int32_t bufferLength() { return capacity_; }
  /// Empties the builder with a new capacity; 0 stands for the capacity of a new builder. Raises 5
  /// for a negative capacity, which stays set all the same beside the old buffer: until the next
  /// good call of this, appending raises errors.
  void clear(std::int32_t totalLength);
  /// Cuts leading and trailing blanks off the buffer, those of the content too.
  void trimToSize();
  /// Appends each piece's text. What a piece raises stops it; the pieces before stay.
  void append(ArgumentList pieces);
  void appendEx(TextRef text, QuoteStyle style);
  /// Inserts at a position of the content. Raises 5 for a position outside, 6 for 32767.
  void prepend(TextRef text, std::int16_t index, QuoteStyle style);

 private:
  [[nodiscard]] std::u16string_view content() const noexcept;
  void add(std::u16string_view piece);
  void growFor(std::int32_t newLength);
  void fitBuffer();
  void makeBlanks();

  // The characters of the buffer up to where it is only blanks, with room for all of it. The
  // content is their beginning: all of them, unless a failed call has left more.
  std::u16string written_;
  std::int32_t length_ = 0;
  std::int32_t bufferSize_ = 0;
  std::int32_t capacity_ = 0;  // differs from the buffer's size only after a failure
};

template <>
const ClassDescription& describe<Concat>();

}  // namespace quendal
