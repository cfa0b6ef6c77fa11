#include "system/host_address.h"

#include <cstdint>

#include "base/text.h"
#include "platform/messages.h"
#include "platform/sockets.h"

namespace quendal::system {
namespace {

bool startUsableSockets() {
  const platform::SocketsStartup layer = platform::startSockets();
  if (!layer.started) {
    platform::systemLog(u"The 32-bit Windows Socket is not responding.");
    return false;
  }
  // A layer that is refused below stays started; deliberate.
  if (layer.maxSockets < 1) {
    platform::systemLog(u"This application requires a minimum of 1 supported sockets.");
    return false;
  }
  if (layer.majorVersion == 0 || (layer.majorVersion == 1 && layer.minorVersion == 0)) {
    platform::systemLog(u"Sockets version " + decimalText(layer.majorVersion) + u"." +
                        decimalText(layer.minorVersion) +
                        u" is not supported by 32-bit Windows Sockets.");
    return false;
  }
  return true;
}

/// Shuts the sockets layer down at the end of the question.
class SocketsUse {
 public:
  SocketsUse() = default;
  SocketsUse(const SocketsUse&) = delete;
  SocketsUse& operator=(const SocketsUse&) = delete;
  ~SocketsUse() {
    if (!platform::stopSockets()) platform::systemLog(u"Socket error occurred in Cleanup.");
  }
};

}  // namespace

std::u16string queryIPAddress() {
  if (!startUsableSockets()) return {};
  const SocketsUse use;
  const std::optional<std::string> host = platform::hostName();
  if (!host) {
    platform::systemLog(u"Windows Sockets error " + decimalText(platform::lastSocketsError()) +
                        u" has occurred. Unable to successfully get Host Name.");
    return {};
  }
  const auto address = platform::firstAddress(*host);
  if (address.empty()) {
    platform::systemLog(
        u"Windows Sockets are not responding. Unable to successfully get Host Name.");
    return {};
  }
  std::u16string text;
  for (const std::uint8_t byte : address) text += (text.empty() ? u"" : u".") + decimalText(byte);
  return text;
}

}  // namespace quendal::system
