// A connection to the host under test.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace quendal::host {

struct Reply {
  int status = 0;  // 0 when the connection ended without an answer
  std::string body;
  std::map<std::string, std::string> headers;
};

class Connection {
 public:
  /// Throws when nobody listens.
  explicit Connection(unsigned short port);
  ~Connection();

  Reply get(const std::string& target, const std::string& extraHeaders = {});
  /// Sends bytes as they are and reads one answer; one without a body for `isHead`.
  Reply exchange(std::string_view bytes, bool isHead = false);
  void send(std::string_view bytes);

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace quendal::host
