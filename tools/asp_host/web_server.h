// A folder as a web site on this machine's own address.
#pragma once

#include <quendal/automation.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace quendal::host {

struct WebServerOptions {
  std::u16string root;  // without "\" at its end
  std::uint16_t port = 8080;
  std::size_t threads = 4;
  std::chrono::seconds scriptTimeout{90};
};

/// Takes whole lines for the program's output (STD_OUTPUT_HANDLE) or error output.
using Log = std::function<void(DWORD stream, std::string_view line)>;

/// Serves until the program is told to end (Ctrl+C). Throws what starting raises.
void serve(const WebServerOptions& options, const Log& log);

}  // namespace quendal::host
