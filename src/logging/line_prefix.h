// The text in front of every log line: stamp, client address and the page's file name. It knows
// nothing of files or levels.
#pragma once

#include <string>
#include <string_view>

namespace quendal {

/// Date and time with milliseconds, machine, user, process id and client address, each followed by
/// a blank; in a page also the page's file name in upper case and a blank. Each is asked now; what
/// of the first four cannot be told is left out, with those after it. The address comes from the
/// page's request, without one it is `storedAddress`. Raises what the request raises, and 91 in a
/// page that has ended.
[[nodiscard]] std::u16string buildLinePrefix(bool inPage, std::u16string_view storedAddress);

/// A server variable of the page's request as text. Raises 91 without a request.
[[nodiscard]] std::u16string serverVariable(std::u16string_view name);

}  // namespace quendal
