// Whole numbers in English words.
#pragma once

#include <string>
#include <string_view>

namespace quendal::strings {

/// The text that is spelled for a number's text: without commas, and without blanks around it.
[[nodiscard]] std::u16string spellable(std::u16string_view number);

/// Spells a spellable text, three characters at a time from the right: "1005" is
/// "one thousand and  five". A character that is no digit gives no word. Texts with a fraction get
/// the grouping of their whole length, and so further words; that, the two blanks after "and", and
/// "fourty" are deliberate. Groups beyond the fifth add nothing.
[[nodiscard]] std::u16string spell(std::u16string_view number);

}  // namespace quendal::strings
