// The text that an encoder builds.
#pragma once

#include <quendal/text.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "automation/text_output.h"

namespace quendal::json {

/// Throws std::bad_alloc when the text gets longer than automation strings can be.
class Writer {
 public:
  /// What is given as it is.
  void put(char16_t c) {
    *room(1) = c;
    ++length_;
  }
  void put(std::u16string_view characters);
  /// Characters as they are, between double quotation marks.
  void putQuoted(std::u16string_view characters);
  /// The same with a ":" behind, and with a "," before unless it is the first.
  void putKey(std::u16string_view characters, bool isFirst);
  /// Text between double quotation marks, with what JSON does not allow there escaped.
  void putText(std::u16string_view text);
  /// All digits of a whole number.
  void putInteger(std::int64_t value);
  /// The ordinary text of a number, with "." for ",".
  void putNumber(double value);
  void putNumber(std::u16string_view ordinaryText);

  /// All that was put; nothing is left then.
  [[nodiscard]] Text take();

 private:
  /// Where so many characters more can be written; they count once `length_` says so.
  char16_t* room(std::size_t count) {
    if (memory_.capacity() - length_ < count) grow(count);
    return memory_.characters() + length_;
  }
  void grow(std::size_t count);

  automation::TextMemory memory_;
  std::size_t length_ = 0;
};

}  // namespace quendal::json
