// The text that an encoder builds.
#pragma once

#include <quendal/text.h>

#include <cstdint>
#include <string_view>

#include "automation/text_output.h"

namespace quendal {

/// Appends to one growing text. Throws std::bad_alloc when memory is short or the text becomes
/// longer than automation strings can be.
class JsonWriter {
 public:
  /// One character as it is.
  void put(char16_t c) {
    *room(1) = c;
    ++length_;
  }
  /// Characters as they are.
  void put(std::u16string_view characters);
  /// Characters as they are, between double quotation marks.
  void putQuoted(std::u16string_view characters);
  /// The same with a ":" behind, and with a "," before unless it is the first.
  void putKey(std::u16string_view characters, bool isFirst);
  /// Text between double quotation marks, with what JSON does not allow there escaped.
  void putText(std::u16string_view text);
  /// The ordinary text of a number, with "." for ",".
  void putNumber(double value);
  void putNumber(std::int32_t value) { putInteger(value); }
  void putNumber(std::u16string_view ordinaryText);

  /// All that was put; the writer is empty then.
  [[nodiscard]] Text take();

 private:
  /// Where so many characters can be written at once.
  char16_t* room(std::size_t count) {
    if (memory_.capacity() - length_ < count) grow(count);
    return memory_.characters() + length_;
  }
  void wroteUpTo(const char16_t* end) {
    length_ = static_cast<std::size_t>(end - memory_.characters());
  }
  void grow(std::size_t count);
  void putInteger(std::int64_t value);

  automation::TextMemory memory_;
  std::size_t length_ = 0;
};

}  // namespace quendal
