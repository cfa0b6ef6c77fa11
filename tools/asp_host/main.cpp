// asp_host: classic ASP pages without a web server.
#include <quendal/automation.h>
#include <shellapi.h>

#include <cstdio>
#include <exception>
#include <future>
#include <stdexcept>

#include "apartment_pool.h"
#include "base/text.h"
#include "encoding.h"
#include "platform/files.h"
#include "web_server.h"

namespace quendal::host {
namespace {

constexpr std::string_view kUsage =
    "usage: asp_host run PAGE.asp [OPTION...]     runs a page and prints what it answers\n"
    "         --method M  --query Q  --form F  --cookie C  --server-variable NAME=VALUE\n"
    "         --root FOLDER (of the site; the page's own)  --headers  --script-timeout SECONDS\n"
    "       asp_host serve FOLDER [OPTION...]     serves a folder as a site on 127.0.0.1\n"
    "         --port N (8080; 0 for a free one)  --threads N (4)  --script-timeout SECONDS (90)\n"
    "         --show-logs (LOGS folders are hidden otherwise)\n";

struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

void print(DWORD stream, std::string_view bytes) {
  while (!bytes.empty()) {
    DWORD written = 0;
    if (!WriteFile(GetStdHandle(stream), bytes.data(), static_cast<DWORD>(bytes.size()), &written,
                   nullptr))
      return;
    bytes.remove_prefix(written);
  }
}

class CommandLine {
 public:
  CommandLine() {
    int count = 0;
    wchar_t** list = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 1; i < count; ++i) words_.emplace_back(plainText(list[i]));
    LocalFree(list);
  }

  [[nodiscard]] bool atEnd() const noexcept { return next_ == words_.size(); }
  std::u16string word(const char* missing) {
    if (atEnd()) throw UsageError(missing);
    return words_[next_++];
  }
  std::string bytes(const char* missing) { return encoded(word(missing), kUtf8); }
  unsigned number(const char* missing, unsigned least, unsigned most) {
    const std::string text = bytes(missing);
    constexpr std::size_t kMostDigits = 6;
    if (text.empty() || text.size() > kMostDigits ||
        text.find_first_not_of("0123456789") != std::string::npos)
      throw UsageError(missing);
    const unsigned value = static_cast<unsigned>(std::stoul(text));
    if (value < least || value > most) throw UsageError(missing);
    return value;
  }

 private:
  std::vector<std::u16string> words_;
  std::size_t next_ = 0;
};

constexpr unsigned kLongestTimeout = 3600;

int runPage(CommandLine& line) {
  std::u16string file = platform::absolutePath(line.word("a page is missing"));
  std::u16string root = file.substr(0, file.rfind(u'\\'));
  PageRequest request;
  bool headers = false;
  unsigned timeout = 90;
  while (!line.atEnd()) {
    const std::string option = line.bytes("");
    if (option == "--method")
      request.method = line.bytes("--method takes a method");
    else if (option == "--query")
      request.query = line.bytes("--query takes a text");
    else if (option == "--cookie")
      request.headers.emplace_back("Cookie", line.bytes("--cookie takes a text"));
    else if (option == "--root")
      root = platform::absolutePath(line.word("--root takes a folder"));
    else if (option == "--headers")
      headers = true;
    else if (option == "--script-timeout")
      timeout = line.number("--script-timeout takes seconds", 1, kLongestTimeout);
    else if (option == "--form") {
      request.body = line.bytes("--form takes a text");
      request.headers.emplace_back("Content-Type", "application/x-www-form-urlencoded");
      if (request.method == "GET") request.method = "POST";
    } else if (option == "--server-variable") {
      const std::u16string pair = line.word("--server-variable takes NAME=VALUE");
      const std::size_t equals = pair.find(u'=');
      if (equals == 0 || equals == pair.npos)
        throw UsageError("--server-variable takes NAME=VALUE");
      request.variables.emplace_back(pair.substr(0, equals), pair.substr(equals + 1));
    } else {
      throw UsageError("unknown option: " + option);
    }
  }
  while (root.ends_with(u'\\')) root.pop_back();
  if (!platform::fileExists(file)) throw UsageError("there is no page " + encoded(file, kUtf8));
  if (!equalNoCase(file.substr(0, root.size() + 1), root + u"\\"))
    throw UsageError("the page is not in the folder of --root");
  std::u16string path = file.substr(root.size());
  std::ranges::replace(path, u'\\', u'/');
  request.path = path;

  std::promise<PageResponse> promise;
  PageResponse response;
  {
    ApartmentPool pool(1, 1);
    auto page =
        std::make_shared<PageRun>(request, PagePlace{root, path}, std::make_shared<SharedState>(),
                                  std::chrono::seconds(timeout));
    static_cast<void>(pool.run(std::move(page),
                               [&](PageResponse answer) { promise.set_value(std::move(answer)); }));
    response = promise.get_future().get();
  }
  if (headers) {
    std::string text =
        "Status: " + std::to_string(response.status) + " " + response.reason + "\r\n";
    for (const auto& [name, value] : response.headers) text += name + ": " + value + "\r\n";
    print(STD_OUTPUT_HANDLE, text + "\r\n");
  }
  print(STD_OUTPUT_HANDLE, response.body);
  if (!response.failure) return 0;
  print(STD_ERROR_HANDLE, *response.failure + "\n");
  return 1;
}

int serveFolder(CommandLine& line) {
  WebServerOptions options;
  options.root = platform::absolutePath(line.word("a folder is missing"));
  while (!line.atEnd()) {
    const std::string option = line.bytes("");
    if (option == "--port")
      options.port = static_cast<std::uint16_t>(line.number("--port takes 0 to 65535", 0, 65535));
    else if (option == "--threads")
      options.threads = line.number("--threads takes 1 to 64", 1, 64);
    else if (option == "--show-logs")
      options.showLogs = true;
    else if (option == "--script-timeout")
      options.scriptTimeout =
          std::chrono::seconds(line.number("--script-timeout takes seconds", 1, kLongestTimeout));
    else
      throw UsageError("unknown option: " + option);
  }
  while (options.root.ends_with(u'\\')) options.root.pop_back();
  if (!platform::lookAt(options.root).isFolder)
    throw UsageError("there is no folder " + encoded(options.root, kUtf8));
  const auto to = [](DWORD stream) {
    return [stream](std::string_view line) { print(stream, std::string(line) + "\n"); };
  };
  serve(options, {to(STD_OUTPUT_HANDLE), to(STD_ERROR_HANDLE)});
  return 0;
}

int runCommand() {
  CommandLine line;
  const std::string command = line.bytes("a command is missing");
  if (command == "run") return runPage(line);
  if (command == "serve") return serveFolder(line);
  throw UsageError("unknown command: " + command);
}

}  // namespace
}  // namespace quendal::host

int main() {
  using namespace quendal::host;
  try {
    return runCommand();
  } catch (const UsageError& error) {
    print(STD_ERROR_HANDLE, "asp_host: " + std::string(error.what()) + "\n" + std::string(kUsage));
    return 2;
  } catch (const std::exception& error) {
    print(STD_ERROR_HANDLE, "asp_host: " + std::string(error.what()) + "\n");
    return 1;
  }
}
