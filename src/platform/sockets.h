// The sockets layer, down to the questions asked of it. One `SocketsLayer` is one start-up.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quendal::platform {

/// What the sockets layer answered when it was started.
struct SocketsStartup {
  bool started = false;
  int maxSockets = 0;
  int majorVersion = 0;
  int minorVersion = 0;
};

/// Starts the sockets layer, asking for version 1.1.
[[nodiscard]] SocketsStartup startSockets() noexcept;

/// Shuts one start-up down. False when the layer reports an error.
[[nodiscard]] bool stopSockets() noexcept;

/// The number of the last sockets error on this thread.
[[nodiscard]] int lastSocketsError() noexcept;

/// The local host name in the code page; nothing on failure.
[[nodiscard]] std::optional<std::string> hostName();

/// Bytes of the first address that a host name resolves to; empty when it does not resolve.
[[nodiscard]] std::vector<std::uint8_t> firstAddress(const std::string& host);

}  // namespace quendal::platform
