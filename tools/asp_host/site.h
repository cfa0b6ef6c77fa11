// What the paths of a site are: pages, files, folders.
#pragma once

#include <string>
#include <string_view>

#include "http_message.h"
#include "request.h"

namespace quendal::host {

/// What a request's target names.
struct Target {
  enum class Kind { Page, File, Folder, Missing, Malformed };
  Kind kind = Kind::Missing;
  PagePlace place;    // of a page or file
  std::string query;  // as it came
};

/// Finds what a target ("/a%20b/?x=1") means below a folder. The last path part of a folder's
/// target must be empty to reach its default document; otherwise the folder itself is named. What
/// lies in a LOGS folder is missing unless `showLogs`.
[[nodiscard]] Target findTarget(const std::u16string& root, std::string_view target, bool showLogs);

/// The content of a file with its type; 500 when it cannot be read.
[[nodiscard]] PageResponse fileResponse(const std::u16string& file);

/// A short HTML page that tells a status, and more if there is more to tell.
[[nodiscard]] PageResponse errorResponse(int status, std::string_view detail = {});

}  // namespace quendal::host
