// What a page answers, collected until its end, and the Response object that collects it.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "fields.h"
#include "http_message.h"
#include "page_object.h"

namespace quendal::host {

/// A cookie that a page sets.
struct Cookie {
  std::u16string name;
  std::u16string value;
  std::u16string attributes;  // "; path=/; HttpOnly"
};

/// The response of a page on its way. Used by the page's thread alone.
class ResponseState {
 public:
  unsigned codePage = 0;
  std::u16string contentType = u"text/html";
  std::u16string charset;

  /// Raises 5 for a body beyond 16 MB.
  void write(std::u16string_view text);
  void clear();
  /// From here on headers and what was written stand.
  void flush() noexcept { flushed_ = body_.size(), committed_ = true; }
  /// Raises 5 when the headers stand already, or for a header of more than one line.
  void setStatus(const std::u16string& status);
  void addHeader(std::u16string_view name, std::u16string_view value);
  void requireOpenHeaders() const;
  [[nodiscard]] std::u16string status() const;
  [[nodiscard]] Cookie& cookie(std::u16string_view name);

  [[nodiscard]] PageResponse finished() const;

 private:
  int status_ = 200;
  std::u16string reason_ = u"OK";
  Headers headers_;
  std::vector<Cookie> cookies_;
  std::string body_;
  std::size_t flushed_ = 0;
  bool committed_ = false;
};

/// `end` ends the page: it throws. `blocks` is the page's own text.
[[nodiscard]] Object makeResponse(const StopFlag& stop, const std::shared_ptr<ResponseState>& state,
                                  std::vector<std::u16string> blocks, std::function<void()> end);

}  // namespace quendal::host
