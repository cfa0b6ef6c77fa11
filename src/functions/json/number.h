// Numbers as they stand in JSON text: an optional "-", "0" or digits without a leading zero, an
// optional fraction, an optional exponent.
#pragma once

namespace quendal::json {

/// A number that was read and where it ends.
struct Number {
  double value;
  const char16_t* end;
};

/// Reads the longest number that starts at `begin`, where a digit stands, or "-" and a digit. The
/// value is the nearest double; 0 for one too small. Raises 6 for one that no double reaches.
[[nodiscard]] Number readNumber(const char16_t* begin, const char16_t* end);

}  // namespace quendal::json
