// Paths of a site: what a request or Server.MapPath names, below the site's folder or refused.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quendal::host {

/// A path from the site's root with "." and ".." resolved, "/" between its parts and none at its
/// end; empty for the root. Nothing for a path that leads above the root, or whose parts the
/// file system would read as something else: a stream, a device, a name it shortens.
[[nodiscard]] std::optional<std::u16string> resolvedPath(std::u16string_view path);

/// True when a part of such a path is the folder in which pages keep their logs.
[[nodiscard]] bool leadsThroughLogs(std::u16string_view resolved);

/// The text behind "%" and two hexadecimal digits, with "+" as a blank when `isForm`. Nothing when
/// a "%" has no digits after it and `isForm` is false; a form keeps it as it is.
[[nodiscard]] std::optional<std::string> percentDecoded(std::string_view text, bool isForm);

}  // namespace quendal::host
