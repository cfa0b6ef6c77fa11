#include "platform/sockets.h"

#include <winsock2.h>

#include <array>
#include <cstdint>

namespace quendal::platform {
namespace {

constexpr WORD kWantedVersion = 0x0101;
constexpr int kHostNameSize = 256;

}  // namespace

SocketsStartup startSockets() noexcept {
  WSADATA data{};
  if (WSAStartup(kWantedVersion, &data) != 0) return {};
  return {true, data.iMaxSockets, LOBYTE(data.wVersion), HIBYTE(data.wVersion)};
}

bool stopSockets() noexcept { return WSACleanup() == 0; }

int lastSocketsError() noexcept { return WSAGetLastError(); }

std::optional<std::string> hostName() {
  std::array<char, kHostNameSize + 1> name{};
  if (gethostname(name.data(), kHostNameSize) == SOCKET_ERROR) return std::nullopt;
  return std::string(name.data());
}

std::vector<std::uint8_t> firstAddress(const std::string& host) {
  const hostent* const entry = gethostbyname(host.c_str());
  if (entry == nullptr || entry->h_addr_list[0] == nullptr || entry->h_length <= 0) return {};
  const auto* const bytes = reinterpret_cast<const std::uint8_t*>(entry->h_addr_list[0]);
  return {bytes, bytes + entry->h_length};
}

}  // namespace quendal::platform
