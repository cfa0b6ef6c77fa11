// The Request object of a page.
#pragma once

#include "fields.h"
#include "http_message.h"
#include "page_object.h"

namespace quendal::host {

/// Where a page is in its site.
struct PagePlace {
  std::u16string root;         // the site's folder, without "\" at its end
  std::u16string virtualPath;  // "/reports/default.asp"

  [[nodiscard]] std::u16string file() const { return physical(virtualPath); }
  /// The file or folder of a path that is below the root.
  [[nodiscard]] std::u16string physical(std::u16string_view resolved) const;
  /// The file or folder that a path means which is relative to the page, or to the root if it
  /// begins with "/". Raises 5 when it is outside the site.
  [[nodiscard]] std::u16string map(std::u16string_view path, std::u16string_view pageFile) const;
};

[[nodiscard]] Object makeRequest(const StopFlag& stop, const PageRequest& request,
                                 const PagePlace& place, unsigned codePage);

}  // namespace quendal::host
