// One entry against the floor: look at the folder, look at the file, open for appending, write the
// same bytes, close.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "bench/row.h"
#include "core/dispatch.h"
#include "logging/logging.h"

namespace quendal {
namespace {

class ScratchFolder {
 public:
  ScratchFolder() {
    std::string pattern =
        (std::filesystem::temp_directory_path() / "quendal-bench-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) std::abort();
    path_ = pattern;
  }
  ~ScratchFolder() { std::filesystem::remove_all(path_); }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  [[nodiscard]] const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

Object loggerIn(const std::filesystem::path& folder) {
  const Object logger = Owned<Logging>::make().object();
  logger.call(u"SetLogPath", folder.u16string() + u"\\");
  logger.call(u"SetLogFile", u"LOG.TXT");
  logger.put(u"RolloverBytes", std::int32_t{0});
  return logger;
}

void floorEntry(const char* folder, const char* file, const std::u16string& bytes) {
  struct stat status;
  if (stat(folder, &status) != 0 || stat(file, &status) != 0) std::abort();
  const int handle = open(file, O_WRONLY | O_APPEND | O_CLOEXEC);
  const std::size_t size = bytes.size() * sizeof(char16_t);
  if (write(handle, bytes.data(), size) != static_cast<ssize_t>(size)) std::abort();
  close(handle);
}

/// The lines of a log from an offset in bytes on.
std::vector<std::u16string> linesOf(const std::filesystem::path& path, std::size_t offset) {
  std::ifstream file(path, std::ios::binary);
  const std::string bytes(std::istreambuf_iterator<char>(file), {});
  std::u16string text((bytes.size() - offset) / 2, u'\0');
  std::memcpy(text.data(), bytes.data() + offset, text.size() * 2);
  std::vector<std::u16string> lines;
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = text.find(u"\r\n", start);
    lines.push_back(text.substr(start, end - start));
    start = end + 2;
  }
  return lines;
}

}  // namespace
}  // namespace quendal

int main() {
  using namespace quendal;
  const ScratchFolder scratch;
  constexpr int kEntries = 5000;
  const std::int16_t level = 2;
  const Variant text(u"The total of report 7 was computed in 12 steps.");

  const Object logger = loggerIn(scratch.path());
  const std::u16string entry = textOf(logger.call(u"WriteLog", level, text)) + u"\r\n";
  const std::string folder = scratch.path().string();
  const std::string file = folder + "/FLOOR.TXT";
  std::ofstream(file).close();
  const auto write = [&] { logger.call(u"WriteLog", level, text); };
  bench::compare("log entry", kEntries, write,
                 [&] { floorEntry(folder.c_str(), file.c_str(), entry); });

  bench::compare(
      "parameter line", kEntries, [&] { logger.call(u"WriteParam", level, u"Name", u"Value"); },
      write);

  const std::filesystem::path nearlyFull = scratch.path() / "full";
  std::filesystem::create_directory(nearlyFull);
  const Object fullLogger = loggerIn(nearlyFull);
  fullLogger.call(u"WriteLog", level, text);
  std::filesystem::resize_file(nearlyFull / "LOG.TXT", 4 * 1024 * 1024);
  const std::filesystem::path fresh = scratch.path() / "fresh";
  std::filesystem::create_directory(fresh);
  const Object freshLogger = loggerIn(fresh);
  constexpr int kFew = 1000;  // so that the fresh log stays small
  bench::compare(
      "log entry, 4 MB log", kFew, [&] { fullLogger.call(u"WriteLog", level, text); },
      [&] { freshLogger.call(u"WriteLog", level, text); });

  // A whole report against the same lines written one by one.
  const std::filesystem::path reports = scratch.path() / "reports";
  std::filesystem::create_directory(reports);
  const Object reporter = loggerIn(reports);
  reporter.call(u"WriteLog", level, text);
  const std::size_t before = std::filesystem::file_size(reports / "LOG.TXT");
  reporter.call(u"LogDiagnostics");
  const std::vector<std::u16string> lines = linesOf(reports / "LOG.TXT", before);
  constexpr int kReports = 50;
  bench::compare(
      "diagnostics report", kReports, [&] { reporter.call(u"LogDiagnostics"); },
      [&] {
        for (const std::u16string& line : lines) reporter.call(u"WriteLog", level, line);
      });
  return 0;
}
