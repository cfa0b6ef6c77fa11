#include "http_client.h"

// The library forgets this one.
#include <utility>
// so that it comes first
#include <boost/asio.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>

namespace quendal::host {

namespace asio = boost::asio;
namespace http = boost::beast::http;

struct Connection::Parts {
  asio::io_context context;
  asio::ip::tcp::socket socket{context};
  boost::beast::flat_buffer buffer;
};

Connection::Connection(unsigned short port) : parts_(std::make_unique<Parts>()) {
  parts_->socket.connect({asio::ip::address_v4::loopback(), port});
  parts_->socket.set_option(asio::ip::tcp::no_delay(true));
}

Connection::~Connection() = default;

Reply Connection::get(const std::string& target, const std::string& extraHeaders) {
  return exchange("GET " + target + " HTTP/1.1\r\nHost: test\r\n" + extraHeaders + "\r\n");
}

void Connection::send(std::string_view bytes) {
  boost::system::error_code ignored;  // the host may refuse before it has read everything
  asio::write(parts_->socket, asio::buffer(bytes), ignored);
}

Reply Connection::exchange(std::string_view bytes, bool isHead) {
  send(bytes);
  boost::system::error_code error;
  http::response_parser<http::string_body> parser;
  parser.skip(isHead);
  http::read(parts_->socket, parts_->buffer, parser, error);
  Reply reply;
  if (error) return reply;
  reply.status = static_cast<int>(parser.get().result_int());
  reply.body = parser.get().body();
  for (const auto& field : parser.get())
    reply.headers[std::string(field.name_string())] = std::string(field.value());
  return reply;
}

}  // namespace quendal::host
