#include "web_server.h"

// The library's coroutine headers forget this one.
#include <utility>
// Before the system's own headers.
#include <boost/asio.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <boost/beast/version.hpp>

#include <cstdio>
#include <memory>
#include <optional>

#include "apartment_pool.h"
#include "encoding.h"
#include "site.h"

namespace quendal::host {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
using boost::system::error_code;
using namespace std::chrono_literals;

constexpr std::uint64_t kLongestBody = 4 * 1024 * 1024;
constexpr std::size_t kMostConnections = 256;
constexpr std::size_t kMostWaitingPages = 256;
constexpr auto kReadTime = 30s;
constexpr auto kDrainTime = 2s;

using RequestParser = http::request_parser<http::string_body>;

std::string text(beast::string_view view) { return {view.data(), view.size()}; }

void tell(FILE* stream, const std::string& line) {
  std::fputs((line + '\n').c_str(), stream);
  std::fflush(stream);
}

/// Awaits with failures as a value.
auto into(error_code& error) { return asio::redirect_error(asio::use_awaitable, error); }

class WebServer : public std::enable_shared_from_this<WebServer> {
 public:
  explicit WebServer(const WebServerOptions& options)
      : options_(options),
        acceptor_(context_, {asio::ip::address_v4::loopback(), options.port}),
        pool_(options.threads, kMostWaitingPages) {}

  void serve() {
    port_ = acceptor_.local_endpoint().port();
    tell(stdout, "serving " + encoded(options_.root, kUtf8) +
                     " at http://127.0.0.1:" + std::to_string(port_) + "/");
    asio::signal_set signals(context_, SIGINT, SIGTERM);
    signals.async_wait([this](error_code, int) { context_.stop(); });
    asio::co_spawn(context_, accept(), asio::detached);
    context_.run();
  }

 private:
  asio::awaitable<void> accept() {
    for (;;) {
      error_code error;
      asio::ip::tcp::socket socket = co_await acceptor_.async_accept(into(error));
      if (error) continue;
      // One connection too many is closed at once.
      if (connections_ < kMostConnections)
        asio::co_spawn(context_, converse(beast::tcp_stream(std::move(socket))), asio::detached);
    }
  }

  /// Answers the requests of a connection until either side is done. A client that hangs up is
  /// noticed when it is read from or written to; its page runs to its end.
  asio::awaitable<void> converse(beast::tcp_stream stream) {
    ++connections_;
    const std::shared_ptr<void> leave(nullptr, [this](void*) { --connections_; });
    beast::flat_buffer buffer;
    bool goOn = true;
    while (goOn) {
      RequestParser parser;
      parser.body_limit(kLongestBody);
      stream.expires_after(kReadTime);
      error_code error;
      co_await http::async_read(stream, buffer, parser, into(error));
      std::optional<PageResponse> response = refusalOf(error);
      if (error && !response) co_return;  // the client is gone
      stream.expires_never();
      if (!response) response = co_await answer(parser.get());
      stream.expires_after(kReadTime);
      goOn = co_await send(stream, parser.get(), std::move(*response), !error);
    }
    co_await drain(stream);
  }

  /// What to answer for a request that cannot be read; nothing when the client is gone.
  static std::optional<PageResponse> refusalOf(error_code error) {
    if (error == http::error::body_limit) return errorResponse(413, "A body has 4 MB at most.");
    if (error == http::error::header_limit) return errorResponse(431);
    const bool isGone =
        error == http::error::end_of_stream || error == http::error::partial_message;
    const bool isMalformed =
        error.category() == http::make_error_code(http::error::bad_method).category();
    if (!error || isGone || !isMalformed) return std::nullopt;
    return errorResponse(400, error.message());
  }

  asio::awaitable<PageResponse> answer(const http::request<http::string_body>& request) {
    if (request.method() == http::verb::unknown)
      co_return errorResponse(501, "The method is not known.");
    const bool isRead = request.method() == http::verb::get || request.method() == http::verb::head;
    const Target target = findTarget(options_.root, text(request.target()), options_.showLogs);
    switch (target.kind) {
      case Target::Kind::Malformed:
        co_return errorResponse(400, "The path cannot be read.");
      case Target::Kind::Missing:
        co_return errorResponse(404);
      case Target::Kind::Folder: {
        PageResponse response = errorResponse(301);
        const std::string path = text(request.target());
        response.headers.emplace_back("Location",
                                      path.substr(0, path.find('?')) + "/" +
                                          (target.query.empty() ? "" : "?" + target.query));
        co_return response;
      }
      case Target::Kind::File:
        if (!isRead) co_return errorResponse(405);
        co_return fileResponse(target.place.file());
      case Target::Kind::Page:
        if (!isRead && request.method() != http::verb::post) co_return errorResponse(405);
        co_return co_await runPage(pageRequest(request, target), target.place);
    }
    co_return errorResponse(500);
  }

  PageRequest pageRequest(const http::request<http::string_body>& request,
                          const Target& target) const {
    PageRequest page;
    page.method = text(request.method_string());
    page.path = target.place.virtualPath;
    page.query = target.query;
    for (const auto& field : request)
      page.headers.emplace_back(text(field.name_string()), text(field.value()));
    page.body = request.body();
    page.port = port_;
    return page;
  }

  asio::awaitable<PageResponse> runPage(PageRequest request, PagePlace place) {
    const std::string name = request.method + " " + encoded(request.path, kUtf8);
    auto page = std::make_shared<PageRun>(std::move(request), std::move(place), shared_,
                                          options_.scriptTimeout);
    const auto start = [this, page](auto handler) {
      // Answers come from the page's thread, which keeps what it answers to; the connection goes on
      // here.
      const auto resume = std::make_shared<decltype(handler)>(std::move(handler));
      const auto answer = [self = shared_from_this(), resume](PageResponse response) {
        asio::post(self->context_, [resume, response = std::move(response)]() mutable {
          std::move (*resume)(std::move(response));
        });
      };
      pool_.run(page, answer);
    };
    PageResponse response =
        co_await asio::async_initiate<const asio::use_awaitable_t<>, void(PageResponse)>(
            start, asio::use_awaitable);
    if (response.failure) {
      tell(stderr, name + ": " + *response.failure);
      response = errorResponse(response.status, *response.failure);
    }
    co_return response;
  }

  /// Sends an answer. Returns whether the connection goes on.
  asio::awaitable<bool> send(beast::tcp_stream& stream,
                             const http::request<http::string_body>& request, PageResponse answer,
                             bool goOn) {
    http::response<http::string_body> response;
    response.version(11);
    response.result(static_cast<unsigned>(answer.status));
    if (!answer.reason.empty()) response.reason(answer.reason);
    for (const auto& [name, value] : answer.headers) response.insert(name, value);
    response.keep_alive(goOn && request.keep_alive());
    response.content_length(answer.body.size());
    const bool hasBody =
        request.method() != http::verb::head && answer.status != 204 && answer.status != 304;
    if (hasBody) response.body() = std::move(answer.body);
    error_code error;
    co_await http::async_write(stream, response, into(error));
    co_return !error && response.keep_alive();
  }

  /// Reads what a refused client still sends, for a while, so that the answer reaches it.
  asio::awaitable<void> drain(beast::tcp_stream& stream) {
    error_code error;
    stream.socket().shutdown(asio::ip::tcp::socket::shutdown_send, error);
    stream.expires_after(kDrainTime);
    std::array<char, 16384> rest{};
    while (!error) co_await stream.async_read_some(asio::buffer(rest), into(error));
  }

  const WebServerOptions options_;
  const std::shared_ptr<SharedState> shared_ = std::make_shared<SharedState>();
  asio::io_context context_{1};
  asio::ip::tcp::acceptor acceptor_;
  std::uint16_t port_ = 0;
  std::size_t connections_ = 0;
  ApartmentPool pool_;
};

}  // namespace

void serve(const WebServerOptions& options) { std::make_shared<WebServer>(options)->serve(); }

}  // namespace quendal::host
