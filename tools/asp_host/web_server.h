// A folder as a web site on this machine's own address.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace quendal::host {

struct WebServerOptions {
  std::u16string root;  // without "\" at its end
  std::uint16_t port = 8080;
  std::size_t threads = 4;  // apartments in which pages run
  std::chrono::seconds scriptTimeout{90};
  bool showLogs = false;  // serve LOGS folders like any other
};

/// What the server tells: that it serves, with the address, and each page that failed.
struct WebServerLog {
  std::function<void(std::string_view line)> started;
  std::function<void(std::string_view line)> failed;
};

/// Serves until the program is told to end (Ctrl+C). Throws what starting raises.
void serve(const WebServerOptions& options, const WebServerLog& log);

}  // namespace quendal::host
