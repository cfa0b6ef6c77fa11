// The text that an encoder builds.
#pragma once

#include <quendal/text.h>

#include <string>
#include <string_view>

namespace quendal::json {

class Writer {
 public:
  /// What is given as it is.
  void put(char16_t c) { text_ += c; }
  void put(std::u16string_view characters) { text_ += characters; }
  /// Characters as they are, between double quotation marks.
  void putQuoted(std::u16string_view characters);
  /// The same with a ":" behind, and with a "," before unless it is the first.
  void putKey(std::u16string_view characters, bool isFirst);
  /// Text between double quotation marks, with what JSON does not allow there escaped.
  void putText(std::u16string_view text);
  /// The ordinary text of a number, with "." for ",".
  void putNumber(double value);
  void putNumber(std::u16string_view ordinaryText);

  /// All that was put. Throws std::bad_alloc when that is longer than automation strings can be.
  [[nodiscard]] Text text() const;

 private:
  std::u16string text_;
};

}  // namespace quendal::json
