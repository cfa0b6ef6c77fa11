#include "describe/piece.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string_view>

namespace quendal {
namespace {

/// Removes what a line begins with. False when it begins otherwise.
bool skip(std::string& line, std::string_view start) {
  if (!line.starts_with(start)) return false;
  line.erase(0, start.size());
  return true;
}

/// Where the text that a line begins belongs, the line without its mark; null when it has none.
std::string* textFor(Entry& entry, std::string& line) {
  if (skip(line, "Result: ")) return &entry.result;
  if (skip(line, "Errors: ")) return &entry.errors;
  const std::size_t colon = line.find("`: ");
  if (!line.starts_with("- `") || colon == std::string::npos) return nullptr;
  std::string& meaning = entry.meanings[line.substr(3, colon - 3)];
  line.erase(0, colon + 3);
  return &meaning;
}

/// Removes the line end at a text's end.
void trim(std::string& text) {
  if (text.ends_with('\n')) text.pop_back();
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
  std::ifstream stream(path);
  Piece piece{.file = path.filename().string(), .opening = {}, .entries = {}};
  std::string line;
  if (!std::getline(stream, line) || !line.starts_with("# "))
    piece.fail("the first line", "is no heading");
  Entry* entry = &piece.opening;
  std::string* text = &entry->notes;
  bool isBlock = false;
  while (std::getline(stream, line)) {
    if (line == "```vbscript" || line == "```text") {
      text = line == "```text" ? &entry->output : &entry->example;
      isBlock = true;
    } else if (isBlock && line == "```") {
      isBlock = false;
    } else if (!isBlock && skip(line, "## ")) {
      entry = &piece.entries.emplace_back();
      text = &entry->notes;
      std::istringstream names(line);
      for (std::string name; std::getline(names >> std::ws, name, ',');)
        entry->names.push_back(name);
    } else if (!isBlock && line.empty()) {
      text = &entry->notes;
      text->append(text->empty() || text->ends_with('\n') ? "" : "\n");
    } else {
      if (std::string* begun = isBlock ? nullptr : textFor(*entry, line)) text = begun;
      text->append(text->empty() ? "" : "\n").append(line);
    }
  }
  if (isBlock) piece.fail(entry->names.at(0), "the block has no end");
  trim(piece.opening.notes);
  for (Entry& each : piece.entries) trim(each.notes);
  return piece;
}

}  // namespace quendal
