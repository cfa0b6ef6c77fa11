#include "describe/piece.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string_view>

namespace quendal {
namespace {

constexpr std::string_view kBlockEnd = "\n```\n";

/// Removes what begins so at a line's start, and returns what follows up to the end, which stays
/// where it is unless it is that of a block. Empty when nothing begins so.
std::string take(std::string& text, std::string_view begin, std::string_view end) {
  const std::size_t place = text.find("\n" + std::string(begin));
  if (place == std::string::npos) return {};
  const std::size_t start = place + 1 + begin.size();
  const std::size_t stop = text.find(end, start);
  if (stop == std::string::npos) throw std::runtime_error("the block has no end");
  const std::string taken = text.substr(start, stop - start);
  text.erase(place, stop + (end == kBlockEnd ? end.size() - 1 : 0) - place);
  return taken;
}

/// An entry of the text from its heading's names on.
Entry readEntry(std::string text) {
  Entry entry;
  std::istringstream heading(text.substr(0, text.find('\n')));
  for (std::string name; std::getline(heading >> std::ws, name, ',');) entry.names.push_back(name);
  text = text.substr(std::min(text.find('\n'), text.size())) + "\n\n";
  entry.example = take(text, "```vbscript\n", kBlockEnd);
  entry.output = take(text, "```text\n", kBlockEnd);
  entry.result = take(text, "Result: ", "\n\n");
  entry.errors = take(text, "Errors: ", "\n\n");
  std::istringstream meanings(take(text, "- `", "\n\n"));
  std::string* meaning = nullptr;  // goes on in the lines that begin no other
  for (std::string line; std::getline(meanings, line);) {
    const std::size_t start = line.starts_with("- `") ? 3 : 0;
    if (meaning != nullptr && start == 0) {
      meaning->append('\n' + line);
      continue;
    }
    const std::size_t middle = line.find("`: ", start);
    if (middle == std::string::npos) throw std::runtime_error("no colon in " + line);
    meaning = &entry.meanings[line.substr(start, middle - start)];
    *meaning = line.substr(middle + 3);
  }
  const std::size_t first = std::min(text.find_first_not_of('\n'), text.size());
  entry.notes = text.substr(first, text.find_last_not_of('\n') + 1 - first);
  return entry;
}

}  // namespace

const Entry& Piece::entryOf(const std::string& name) const {
  const auto found = std::ranges::find_if(
      entries, [&](const Entry& entry) { return std::ranges::count(entry.names, name) != 0; });
  if (found == entries.end()) fail(name, "has no entry");
  return *found;
}

void Piece::fail(const std::string& about, const std::string& what) const {
  throw std::runtime_error(file + ": " + about + ": " + what);
}

Piece readPiece(const std::filesystem::path& path) {
  std::ostringstream content;
  content << std::ifstream(path).rdbuf();
  const std::string text = content.str();
  Piece piece;
  piece.file = path.filename().string();
  if (!text.starts_with("# ")) piece.fail("the first line", "is no heading");
  constexpr std::string_view kHeading = "\n## ";
  std::size_t start = 2;
  for (bool isFirst = true; start < text.size(); isFirst = false) {
    const std::size_t end = std::min(text.find(kHeading, start), text.size());
    const std::string section = text.substr(start, end - start);
    try {
      (isFirst ? piece.opening : piece.entries.emplace_back()) = readEntry(section);
    } catch (const std::runtime_error& error) {
      piece.fail(section.substr(0, section.find('\n')), error.what());
    }
    start = end + kHeading.size();
  }
  return piece;
}

}  // namespace quendal
