// There is no layer to start: the answers to a start-up are what a version 1.1 layer gives.
#include "platform/sockets.h"

#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <memory>

namespace quendal::platform {
namespace {

constexpr int kMaxSockets = 32767;
constexpr std::size_t kHostNameSize = 256;

struct AddressFreer {
  void operator()(addrinfo* list) const noexcept { freeaddrinfo(list); }
};

}  // namespace

SocketsStartup startSockets() noexcept { return {true, kMaxSockets, 1, 1}; }

bool stopSockets() noexcept { return true; }

int lastSocketsError() noexcept { return errno; }

std::optional<std::string> hostName() {
  std::array<char, kHostNameSize + 1> name{};  // a cut name has no terminator of its own
  if (gethostname(name.data(), kHostNameSize) != 0) return std::nullopt;
  return std::string(name.data());
}

std::vector<std::uint8_t> firstAddress(const std::string& host) {
  addrinfo hints{};
  hints.ai_family = AF_INET;
  hints.ai_socktype = SOCK_STREAM;  // one entry for each address
  addrinfo* list = nullptr;
  if (getaddrinfo(host.c_str(), nullptr, &hints, &list) != 0) return {};
  const std::unique_ptr<addrinfo, AddressFreer> owner(list);
  if (list == nullptr || list->ai_addr == nullptr) return {};
  const auto& address = reinterpret_cast<const sockaddr_in*>(list->ai_addr)->sin_addr;
  const auto* const bytes = reinterpret_cast<const std::uint8_t*>(&address);
  return {bytes, bytes + sizeof address};
}

}  // namespace quendal::platform
