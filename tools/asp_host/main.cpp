// asp_host: classic ASP pages without a web server.
#include <quendal/automation.h>

#include <fcntl.h>
#include <io.h>

#include <charconv>
#include <chrono>
#include <cstdio>
#include <exception>
#include <functional>
#include <future>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "apartment_pool.h"
#include "base/text.h"
#include "encoding.h"
#include "platform/files.h"
#include "web_server.h"

namespace quendal::host {
namespace {

constexpr std::string_view kUsage =
    "usage: asp_host run PAGE.asp [OPTION...]     runs a page and prints its response\n"
    "         --method M  --query Q  --form F  --cookie C  --server-variable NAME=VALUE\n"
    "         --root FOLDER (of the site; else the page's)  --headers  --script-timeout SECONDS\n"
    "       asp_host serve FOLDER [OPTION...]     serves a folder as a site on 127.0.0.1\n"
    "         --port N (8080; 0 for a free one)  --threads N (4)  --script-timeout SECONDS (90)\n"
    "         --show-logs (LOGS folders are hidden otherwise)\n";

struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

void print(FILE* stream, const std::string& text) {
  std::fwrite(text.data(), 1, text.size(), stream);
  std::fflush(stream);
}

/// The words of the command line, one after the other.
class CommandLine {
 public:
  CommandLine(int count, wchar_t** words) : words_(words + 1, words + count) {}

  std::u16string word(const std::string& missing) {
    if (next_ == words_.size()) throw UsageError(missing);
    return plainText(words_[next_++]);
  }
  std::string bytes(const std::string& missing) { return encoded(word(missing), kUtf8); }
  unsigned number(unsigned least, unsigned most) {
    const std::string wanted =
        std::to_string(least) + " to " + std::to_string(most) + " is expected";
    const std::string text = bytes(wanted);
    unsigned value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || *end != '\0' || value < least || value > most)
      throw UsageError(wanted);
    return value;
  }
  /// The options, in any order, to the end.
  void options(const std::map<std::string, std::function<void()>>& known) {
    while (next_ < words_.size()) {
      const std::string option = bytes("");
      const auto found = known.find(option);
      if (found == known.end()) throw UsageError("unknown option: " + option);
      try {
        found->second();
      } catch (const UsageError& error) {
        throw UsageError(option + ": " + error.what());
      }
    }
  }
  std::chrono::seconds timeout() { return std::chrono::seconds(number(1, 3600)); }

 private:
  std::vector<wchar_t*> words_;
  std::size_t next_ = 0;
};

/// The absolute form of a folder's path, without "\" at its end.
std::u16string folderAt(const std::u16string& path) {
  std::u16string folder = platform::absolutePath(path);
  while (folder.ends_with(u'\\')) folder.pop_back();
  if (!platform::lookAt(folder).isFolder)
    throw UsageError("there is no folder " + encoded(path, kUtf8));
  return folder;
}

int runPage(CommandLine& line) {
  const std::u16string file = platform::absolutePath(line.word("a page is missing"));
  std::u16string root = file.substr(0, file.rfind(u'\\'));
  PageRequest request;
  bool headers = false;
  std::chrono::seconds timeout{90};
  const std::string text = "a text is expected";
  line.options({
      {"--method", [&] { request.method = line.bytes(text); }},
      {"--query", [&] { request.query = line.bytes(text); }},
      {"--cookie", [&] { request.headers.emplace_back("Cookie", line.bytes(text)); }},
      {"--form",
       [&] {
         request.body = line.bytes(text);
         request.headers.emplace_back("Content-Type", "application/x-www-form-urlencoded");
         if (request.method == "GET") request.method = "POST";
       }},
      {"--server-variable",
       [&] {
         const std::string wanted = "NAME=VALUE is expected";
         const std::u16string pair = line.word(wanted);
         const std::size_t equals = pair.find(u'=');
         if (equals == 0 || equals == pair.npos) throw UsageError(wanted);
         request.variables.emplace_back(pair.substr(0, equals), pair.substr(equals + 1));
       }},
      {"--root", [&] { root = folderAt(line.word("a folder is expected")); }},
      {"--headers", [&] { headers = true; }},
      {"--script-timeout", [&] { timeout = line.timeout(); }},
  });
  if (!platform::fileExists(file)) throw UsageError("there is no page " + encoded(file, kUtf8));
  if (!equalNoCase(file.substr(0, root.size() + 1), root + u"\\"))
    throw UsageError("the page is not in the folder of --root");
  request.path = replaceAll(file.substr(root.size()), u"\\", u"/");

  const PagePlace place{root, request.path};
  std::promise<PageResponse> promise;
  ApartmentPool(1, 1).run(
      std::make_shared<PageRun>(request, place, std::make_shared<SharedState>(), timeout),
      [&](PageResponse answer) { promise.set_value(std::move(answer)); });
  const PageResponse response = promise.get_future().get();
  if (headers) {
    print(stdout, "Status: " + std::to_string(response.status) + " " + response.reason + "\r\n");
    for (const auto& [name, value] : response.headers) print(stdout, name + ": " + value + "\r\n");
    print(stdout, "\r\n");
  }
  print(stdout, response.body);
  if (!response.failure) return 0;
  print(stderr, *response.failure + "\n");
  return 1;
}

int serveFolder(CommandLine& line) {
  WebServerOptions options;
  options.root = folderAt(line.word("a folder is missing"));
  line.options({
      {"--port", [&] { options.port = static_cast<std::uint16_t>(line.number(0, 65535)); }},
      {"--threads", [&] { options.threads = line.number(1, 64); }},
      {"--show-logs", [&] { options.showLogs = true; }},
      {"--script-timeout", [&] { options.scriptTimeout = line.timeout(); }},
  });
  serve(options);
  return 0;
}

int runCommand(CommandLine line) {
  try {
    const std::string command = line.bytes("a command is missing");
    if (command == "run") return runPage(line);
    if (command == "serve") return serveFolder(line);
    throw UsageError("unknown command: " + command);
  } catch (const UsageError& error) {
    print(stderr, "asp_host: " + std::string(error.what()) + "\n" + std::string(kUsage));
    return 2;
  } catch (const std::exception& error) {
    print(stderr, "asp_host: " + std::string(error.what()) + "\n");
    return 1;
  }
}

}  // namespace
}  // namespace quendal::host

int wmain(int count, wchar_t** words) {
  for (FILE* stream : {stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
  const int status = quendal::host::runCommand({count, words});
  // Pages that did not end may still run, wherever they are.
  TerminateProcess(GetCurrentProcess(), static_cast<UINT>(status));
  return status;
}
