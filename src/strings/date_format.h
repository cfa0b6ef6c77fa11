// Dates by the library's own format tokens, in English whatever the locale is.
#pragma once

#include <string>
#include <string_view>

#include "base/date.h"

namespace quendal::strings {

/// Replaces every token of the format ("#DD", "#MMMM", "#HH24", ...) and leaves all else as it is.
///
/// The result is that of replacing the tokens one after the other, in the order of the table in
/// the implementation and each over the whole text. So a token may begin in the format and end in
/// a name that a token of higher rank has left behind it: "#D#MMM" in December is first "#DDec"
/// and then "05ec". That is deliberate.
[[nodiscard]] std::u16string formatMoment(const Moment& moment, std::u16string_view format);

}  // namespace quendal::strings
