// The machine's own network address.
#pragma once

#include <string>

namespace quendal::system {

/// The first address the host name resolves to, as decimal bytes joined by "."; the empty string
/// on any failure, which goes to the system log.
[[nodiscard]] std::u16string queryIPAddress();

}  // namespace quendal::system
