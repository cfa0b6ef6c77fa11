// A page host that serves ../site is asked over HTTP: host_serve_tests PORT SITE_FOLDER HOST_ERRORS
// The library forgets this one.
#include <utility>
// so that it comes first
#include <boost/asio.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "base/utf8.h"

namespace quendal::host {
namespace {

namespace asio = boost::asio;
namespace http = boost::beast::http;

using Reply = http::response<http::string_body>;

unsigned short port;
std::filesystem::path siteFolder;
std::filesystem::path errorOutput;

std::string contentOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

class Connection {
 public:
  Connection() {
    socket_.connect({asio::ip::address_v4::loopback(), port});
    socket_.set_option(asio::ip::tcp::no_delay(true));
  }

  void send(std::string_view bytes) {
    boost::system::error_code ignored;  // the host may refuse before it has read everything
    asio::write(socket_, asio::buffer(bytes), ignored);
  }
  /// Sends bytes as they are and reads one answer; one without a body for `isHead`. Status 0 when
  /// the connection ends without an answer.
  Reply exchange(std::string_view bytes, bool isHead = false) {
    send(bytes);
    boost::system::error_code error;
    http::response_parser<http::string_body> parser;
    parser.skip(isHead);
    http::read(socket_, buffer_, parser, error);
    if (error) parser.get().result(0);
    return parser.release();
  }
  Reply get(const std::string& target, const std::string& extraHeaders = {}) {
    return exchange("GET " + target + " HTTP/1.1\r\nHost: test\r\n" + extraHeaders + "\r\n");
  }

 private:
  asio::io_context context_;
  asio::ip::tcp::socket socket_{context_};
  boost::beast::flat_buffer buffer_;
};

Reply get(const std::string& target) { return Connection().get(target); }

/// Runs a number of clients at once, each on a connection of its own.
template <class Client>
void together(int clients, Client client) {
  std::vector<std::thread> threads;
  for (int i = 0; i < clients; ++i)
    threads.emplace_back([&client, i] {
      Connection connection;
      client(connection, i);
    });
  for (std::thread& thread : threads) thread.join();
}

TEST(Serve, EachRequestHasItsStatus) {
  const std::string big(5'000'000, 'x');
  const auto request = [](const std::string& line, const std::string& headers = {},
                          const std::string& body = {}) {
    return line + " HTTP/1.1\r\nHost: test\r\n" + headers + "\r\n" + body;
  };
  const struct {
    std::string request;
    unsigned status;
  } kCases[] = {
      {request("GET /"), 200},
      {request("GET /?a=%zz"), 200},
      {request("GET /DEFAULT.asp"), 200},
      {request("POST /default.asp", "Content-Length: 3\r\n", "a=b"), 200},
      {request("POST /default.asp", "Transfer-Encoding: chunked\r\n", "3\r\na=b\r\n0\r\n\r\n"),
       200},
      {request("GET /static.txt"), 200},
      {request("GET /folder/"), 200},
      {request("GET /folder?x"), 301},
      {request("GET /missing.asp"), 404},
      {request("GET /static.txt/"), 404},
      {request("GET /logged.inc"), 404},
      {request("GET /default.asp."), 404},
      {request("GET /default.asp%20"), 404},
      {request("GET /default.asp::$DATA"), 404},
      {request("GET /%00"), 404},
      {request("GET /nul"), 404},
      {request("GET /../pages/objects.asp"), 404},
      {request("GET /%2e%2e/pages/objects.asp"), 404},
      {request("GET /..%5cpages%5cobjects.asp"), 404},
      {request("GET /%zz"), 400},
      {request("GET /%ff"), 400},
      {request("GET default.asp"), 400},
      {request("PUT /default.asp", "Content-Length: 0\r\n"), 405},
      {request("POST /static.txt", "Content-Length: 0\r\n"), 405},
      {request("INVENT /default.asp"), 501},
      {request("POST /default.asp", "Transfer-Encoding: gzip, chunked\r\n"), 501},
      {request("POST /default.asp", "Content-Encoding: gzip\r\nContent-Length: 1\r\n", "x"), 415},
      {request("POST /default.asp", "Content-Length: 5000000\r\n", big), 413},
      {request("POST /default.asp", "Content-Length: many\r\n"), 400},
      {request("GET /", "X: " + big.substr(0, 20'000) + "\r\n"), 431},
      {"\x16\x03\x01\r\n\r\n", 400},
      {request("GET /raises.asp"), 500},
      {request("GET /cycle.asp"), 500},
  };
  for (const auto& test : kCases)
    EXPECT_EQ(Connection().exchange(test.request).result_int(), test.status)
        << test.request.substr(0, 80);
  const Reply head = Connection().exchange(request("HEAD /static.txt"), true);
  EXPECT_EQ(head.result_int(), 200u);
  EXPECT_EQ(head.at("Content-Length"), "11");
  EXPECT_EQ(get("/folder?x").at("Location"), "/folder/?x");
}

TEST(Serve, AFailureIsToldWithFileAndLine) {
  for (const std::string& told : {get("/raises.asp").body(), contentOf(errorOutput)})
    EXPECT_NE(told.find("raises.asp, line 3: Microsoft VBScript runtime error 800A0009: Subscript"),
              std::string::npos)
        << told;
  EXPECT_NE(get("/cycle.asp").body().find("cycle.asp, line 1: the file includes itself"),
            std::string::npos);
}

TEST(Serve, ClientsThatHangUpAreForgotten) {
  for (int i = 0; i < 40; ++i) {
    Connection connection;
    connection.send(std::string("POST /alpha.asp HTTP/1.1\r\nHost: test\r\nContent-Le"
                                "ngth: 9\r\n\r\na=b")
                        .substr(0, 20u + static_cast<unsigned>(i)));
  }
  for (int i = 0; i < 40; ++i) Connection().send("GET /default.asp HTTP/1.1\r\nHost: t\r\n\r\n");
  EXPECT_EQ(get("/").result_int(), 200u);
}

TEST(Serve, ASessionBelongsToItsCookie) {
  const Reply first = get("/");
  EXPECT_NE(first.body().find("visits 1"), std::string::npos);
  const std::string cookie(first.at("Set-Cookie"));
  const std::string header = "Cookie: " + cookie.substr(0, cookie.find(';')) + "\r\n";
  const Reply second = Connection().get("/", header);
  EXPECT_NE(second.body().find("visits 2"), std::string::npos);
  EXPECT_EQ(second.count("Set-Cookie"), 0u);
  EXPECT_NE(get("/").body().find("visits 1"), std::string::npos);
}

TEST(Serve, TheApplicationsLockKeepsPagesApart) {
  const int before = std::stoi(get("/hits.asp").body());
  together(8, [](Connection& connection, int) {
    for (int i = 0; i < 25; ++i) EXPECT_EQ(connection.get("/hits.asp").result_int(), 200u);
  });
  EXPECT_EQ(std::stoi(get("/hits.asp").body()), before + 201);
}

TEST(Serve, EveryLoggedEntryIsInTheLogOnceWithItsOwnPagesDetails) {
  constexpr int kClients = 16;
  constexpr int kRequests = 125;
  std::filesystem::remove_all(siteFolder / "LOGS");
  std::atomic<int> answered = 0;
  together(kClients, [&](Connection& connection, int client) {
    for (int i = 0; i < kRequests; ++i) {
      const std::string entry = std::to_string(client) + "-" + std::to_string(i);
      const Reply reply =
          connection.get((client % 2 == 0 ? "/alpha.asp?entry=" : "/beta.asp?entry=") + entry,
                         "User-Agent: client " + std::to_string(client) + "\r\n");
      if (reply.result_int() == 200 && reply.body().find("logged " + entry) != std::string::npos)
        ++answered;
    }
  });
  EXPECT_EQ(answered, kClients * kRequests);

  std::multiset<std::string> found;
  int files = 0;
  for (const auto& file : std::filesystem::directory_iterator(siteFolder / "LOGS")) {
    ++files;
    const std::string bytes = contentOf(file.path());
    std::u16string text(bytes.size() / 2, u'\0');
    std::memcpy(text.data(), bytes.data(), text.size() * 2);
    std::string log = toUtf8(text);
    for (std::size_t at = 0, end; (end = log.find("\r\n", at)) != std::string::npos; at = end + 2) {
      const std::string line = log.substr(at, end - at);
      const std::size_t details = line.find(" 127.0.0.1 ");
      if (line.find(" entry ") != std::string::npos)
        found.insert(details == std::string::npos ? line : line.substr(details + 1));
    }
  }
  std::multiset<std::string> expected;
  for (int client = 0; client < kClients; ++client)
    for (int i = 0; i < kRequests; ++i)
      expected.insert(std::string("127.0.0.1 ") + (client % 2 == 0 ? "ALPHA" : "BETA") +
                      ".ASP entry " + std::to_string(client) + "-" + std::to_string(i) +
                      " of client " + std::to_string(client));
  EXPECT_TRUE(found == expected) << found.size() << " entries, expected " << expected.size();
  EXPECT_GE(files, 3);  // the log and its archives
  for (const char* hidden : {"/LOGS/LOG.TXT", "/logs/log.txt", "/l%4fgs/LOG.TXT", "/LOGS./LOG.TXT",
                             "/folder/../LOGS/LOG.TXT", "/LOGS%5cLOG.TXT", "/LOGS", "/LOGS/"})
    EXPECT_EQ(get(hidden).result_int(), 404u) << hidden;
}

// The last one: it leaves the host without apartments to give.
TEST(Serve, PagesThatNeverEndAreAnsweredForUntilThereAreTooMany) {
  const auto neverEnds = [](Connection& connection, int i) {
    const Reply reply = connection.get(i % 2 == 0 ? "/endless.asp" : "/stubborn.asp");
    EXPECT_EQ(reply.result_int(), 500u);
    EXPECT_NE(reply.body().find("longer than its time-out"), std::string::npos) << reply.body();
  };
  // More of them than there are apartments; the second kind holds the application's lock.
  together(6, neverEnds);
  EXPECT_EQ(get("/hits.asp").result_int(), 200u);
  together(2, neverEnds);
  EXPECT_EQ(get("/hits.asp").result_int(), 503u);
  EXPECT_EQ(get("/static.txt").result_int(), 200u);
  EXPECT_NE(contentOf(errorOutput).find("GET /hits.asp: Too many pages did not end"),
            std::string::npos);
}

}  // namespace
}  // namespace quendal::host

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  if (argc != 4) return 2;
  quendal::host::port = static_cast<unsigned short>(std::stoi(argv[1]));
  quendal::host::siteFolder = argv[2];
  quendal::host::errorOutput = argv[3];
  return RUN_ALL_TESTS();
}
