// A folder as a web site on this machine's own address.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace quendal::host {

struct WebServerOptions {
  std::u16string root;  // without "\" at its end
  std::uint16_t port = 8080;
  std::size_t threads = 4;  // apartments in which pages run
  std::chrono::seconds scriptTimeout{90};
  bool showLogs = false;  // serve LOGS folders like any other
};

/// Serves until the program is told to end (Ctrl+C). Tells the address on the standard output, and
/// each page that failed on the standard error. Throws what starting raises.
void serve(const WebServerOptions& options);

}  // namespace quendal::host
