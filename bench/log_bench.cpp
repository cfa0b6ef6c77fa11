// Log entries against the floor, and longer work against the same entries one by one.
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "base/text.h"
#include "bench/entry_by_hand.h"
#include "bench/row.h"
#include "bench/scratch_folder.h"
#include "bench/scratch_log.h"

namespace quendal::bench {
namespace {

/// The lines of a log from an offset in bytes on.
std::vector<std::u16string> linesOf(const std::filesystem::path& path, std::size_t offset) {
  std::ifstream file(path, std::ios::binary);
  const std::string bytes(std::istreambuf_iterator<char>(file), {});
  std::u16string text((bytes.size() - offset) / 2, u'\0');
  std::memcpy(text.data(), bytes.data() + offset, text.size() * 2);
  std::vector<std::u16string> lines;
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = text.find(kLineEnd, start);
    lines.push_back(text.substr(start, end - start));
    start = end + kLineEnd.size();
  }
  return lines;
}

}  // namespace

void run() {
  const ScratchFolder scratch;
  constexpr int kEntries = 2000;
  const std::int16_t level = 2;
  const Variant text(u"The total of report 7 was computed in 12 steps.");

  const Object logger = loggerIn(scratch / "log");
  const std::u16string entry = textOf(logger.call(u"WriteLog", level, text)).append(kLineEnd);
  const HandLog hand{scratch / "log", scratch / "log" / "FLOOR.TXT"};
  std::ofstream(hand.file).close();
  const auto write = [&] { logger.call(u"WriteLog", level, text); };
  compare("log entry (look, open, write, close by hand)", kEntries, write,
          [&] { plainEntryByHand(hand, entry); });
  compare("log entry (all its system calls by hand)", kEntries, write,
          [&] { wholeEntryByHand(hand, entry); });

  const auto writeParameter = [&] { logger.call(u"WriteParam", level, u"Name", u"Value"); };
  compare("parameter line (log entry)", kEntries, writeParameter, write);

  const Object fullLogger = loggerIn(scratch / "full");
  fullLogger.call(u"WriteLog", level, text);
  std::filesystem::resize_file(scratch / "full" / "LOG.TXT", 4 * 1024 * 1024);
  const Object freshLogger = loggerIn(scratch / "fresh");
  constexpr int kFew = 1000;  // so that the fresh log stays small
  compare(
      "log entry, 4 MB log (empty log)", kFew, [&] { fullLogger.call(u"WriteLog", level, text); },
      [&] { freshLogger.call(u"WriteLog", level, text); });

  // A whole report against the same lines written one by one.
  const Object reporter = loggerIn(scratch / "reports");
  const std::filesystem::path log = scratch / "reports" / "LOG.TXT";
  reporter.call(u"WriteLog", level, text);
  const std::size_t before = std::filesystem::file_size(log);
  reporter.call(u"LogDiagnostics");
  const std::vector<std::u16string> lines = linesOf(log, before);
  constexpr int kReports = 20;
  compare(
      "diagnostics report (its lines one by one)", kReports,
      [&] { reporter.call(u"LogDiagnostics"); },
      [&] {
        for (const std::u16string& line : lines) reporter.call(u"WriteLog", level, line);
      });
}

}  // namespace quendal::bench
