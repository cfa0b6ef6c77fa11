// A request as a page sees it, and what a page answers.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quendal::host {

using Headers = std::vector<std::pair<std::string, std::string>>;

struct PageRequest {
  std::string method = "GET";
  std::u16string path;  // decoded, from the site's root: "/reports/default.asp"
  std::string query;    // as it came, without "?"
  Headers headers;
  std::string body;
  unsigned port = 80;
  /// Server variables that replace or add to those made of the request.
  std::vector<std::pair<std::u16string, std::u16string>> variables;

  /// The value of a header, its name in any case; empty when there is none.
  [[nodiscard]] std::string header(std::string_view name) const;
};

struct PageResponse {
  int status = 200;
  std::string reason;  // empty for the usual one
  Headers headers;     // Content-Type among them
  std::string body;
  /// Why the page did not come to its end, with file and line; the body is what it wrote before.
  std::optional<std::string> failure;
};

}  // namespace quendal::host
