// Words with capitals.
#pragma once

#include <string>
#include <string_view>

namespace quendal::strings {

/// The first character and each one after a blank (U+0020 only) in upper case, all others in lower
/// case. Every character goes through the host's code page, so one that it lacks becomes "?".
[[nodiscard]] std::u16string capitalize(std::u16string_view sentence);

}  // namespace quendal::strings
