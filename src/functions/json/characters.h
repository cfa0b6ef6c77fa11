// Kinds of characters in JSON text.
#pragma once

namespace quendal::json {

// Most characters are told by the first comparison.

constexpr bool isBlank(char16_t c) noexcept {
  return c <= u' ' && (c == u' ' || c == u'\n' || c == u'\r' || c == u'\t');
}

/// A double quotation mark, a backslash or a control character: what a string cannot hold as it is.
/// A function object, so that algorithms can inline it.
inline constexpr auto isSpecial = [](char16_t c) noexcept {
  return c <= u'\\' && (c == u'\\' || c == u'"' || c < 0x20);
};

}  // namespace quendal::json
