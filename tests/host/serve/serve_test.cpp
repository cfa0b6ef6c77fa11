// A page host that serves ../site is asked over HTTP: host_serve_tests PORT SITE_FOLDER HOST_ERRORS
// The library forgets this one.
#include <utility>
// so that it comes first
#include <boost/asio.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

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
      {request("POST /default.asp", "Content-Length: 3\r\n", "a=b"), 200},
      {request("POST /default.asp", "Transfer-Encoding: chunked\r\n", "3\r\na=b\r\n0\r\n\r\n"),
       200},
      {request("GET /static.txt"), 200},
      {request("GET /folder/"), 200},
      {request("GET /folder?x"), 301},
      {request("GET /static.txt/"), 404},
      {request("GET /logged.inc"), 404},
      {request("GET /%2e%2e/pages/objects.asp"), 404},
      {request("GET /%zz"), 400},
      {request("GET default.asp"), 400},
      {request("PUT /default.asp", "Content-Length: 0\r\n"), 405},
      {request("POST /static.txt", "Content-Length: 0\r\n"), 405},
      {request("INVENT /default.asp"), 501},
      {request("POST /default.asp", "Content-Length: 5000000\r\n", big), 413},
      {request("POST /default.asp", "Content-Length: many\r\n"), 400},
      {request("GET /", "X: " + big.substr(0, 20'000) + "\r\n"), 431},
      {"\x16\x03\x01\r\n\r\n", 400},
      {request("GET /raises.asp"), 500},
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
  const auto entryOf = [](int client, int i) {
    return std::to_string(client) + "-" + std::to_string(i);
  };
  std::filesystem::remove_all(siteFolder / "LOGS");
  together(kClients, [&](Connection& connection, int client) {
    const std::string page = client % 2 == 0 ? "/alpha.asp?entry=" : "/beta.asp?entry=";
    const std::string agent = "User-Agent: client " + std::to_string(client) + "\r\n";
    for (int i = 0; i < kRequests; ++i) {
      const Reply reply = connection.get(page + entryOf(client, i), agent);
      EXPECT_NE(reply.body().find("logged " + entryOf(client, i)), std::string::npos);
    }
  });

  std::multiset<std::string> found, expected;
  int files = 0;
  for (const auto& file : std::filesystem::directory_iterator(siteFolder / "LOGS")) {
    ++files;
    const std::string bytes = contentOf(file.path());
    std::string log;  // of ASCII characters
    for (std::size_t i = 0; i < bytes.size(); i += 2) log += bytes[i];
    std::istringstream lines(log);
    for (std::string line; std::getline(lines, line);) {
      const std::size_t details = line.find("127.0.0.1 ");
      if (line.find(" entry ") != std::string::npos)
        found.insert(details == std::string::npos ? line : line.substr(details));
    }
  }
  for (int client = 0; client < kClients; ++client)
    for (int i = 0; i < kRequests; ++i)
      expected.insert(std::string("127.0.0.1 ") + (client % 2 == 0 ? "ALPHA" : "BETA") +
                      ".ASP entry " + entryOf(client, i) + " of client " + std::to_string(client) +
                      "\r");
  EXPECT_TRUE(found == expected) << found.size() << " entries, expected " << expected.size();
  EXPECT_GE(files, 3);  // the log and its archives
  for (const char* hidden : {"/l%4fgs/LOG.TXT", "/folder/../LOGS/LOG.TXT", "/LOGS/"})
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
