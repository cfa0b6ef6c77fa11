#include "describe/piece.h"

#include <algorithm>
#include <fstream>
#include <regex>
#include <sstream>
#include <stdexcept>

namespace quendal {
namespace {

void trimEnd(std::string& text) { text.resize(text.find_last_not_of('\n') + 1); }

/// The names of a heading, "A, B".
std::vector<std::string> namesOf(const std::string& heading) {
  std::istringstream list(heading);
  std::vector<std::string> names;
  for (std::string name; std::getline(list >> std::ws, name, ',');) names.push_back(name);
  return names;
}

/// Reads line by line; a paragraph goes on in the text that its first line chose.
class PieceReader {
 public:
  explicit PieceReader(Piece& piece) : piece_(piece) {}

  void take(const std::string& line) {
    static const std::regex kMeaning("- `(\\w+)`: (.*)"), kField("(Result|Errors): (.*)"),
        kHeading("##? ?(.*)"), kFence("```(vbscript|text)");
    std::smatch parts;
    if (inBlock_) {
      inBlock_ = line != "```";
      if (inBlock_ || text_ == &entry_->notes) *text_ += line + '\n';
      if (!inBlock_) text_ = &entry_->notes;
    } else if (std::regex_match(line, parts, kFence)) {
      begin(parts[1] == "text" ? entry_->output : entry_->example, "");
      inBlock_ = true;
    } else if (line.starts_with("```")) {
      begin(entry_->notes, line);
      inBlock_ = true;
    } else if (std::regex_match(line, parts, kHeading)) {
      if (line.starts_with("##")) entry_ = &piece_.entries.emplace_back();
      entry_->names = namesOf(parts[1]);
      text_ = &entry_->notes;
    } else if (std::regex_match(line, parts, kMeaning)) {
      begin(entry_->meanings[parts[1]], parts[2]);
    } else if (std::regex_match(line, parts, kField)) {
      begin(parts[1] == "Result" ? entry_->result : entry_->errors, parts[2]);
    } else {
      if (line.empty()) text_ = &entry_->notes;
      *text_ += line + '\n';
    }
  }

  void end() {
    if (inBlock_) piece_.fail(entry_->names.at(0), "the block has no end");
    finish(piece_.opening);
    for (Entry& entry : piece_.entries) finish(entry);
  }

 private:
  void begin(std::string& text, const std::string& start) {
    if (&text != &entry_->notes && !text.empty())
      piece_.fail(entry_->names.at(0), "something is said twice");
    text_ = &text;
    if (!start.empty()) text += start + '\n';
  }

  static void finish(Entry& entry) {
    for (auto* text : {&entry.notes, &entry.result, &entry.errors, &entry.example, &entry.output})
      trimEnd(*text);
    for (auto& [name, meaning] : entry.meanings) trimEnd(meaning);
    entry.notes.erase(0, entry.notes.find_first_not_of('\n'));
  }

  Piece& piece_;
  Entry* entry_ = &piece_.opening;
  std::string* text_ = &entry_->notes;
  bool inBlock_ = false;
};

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
  std::ifstream file(path);
  if (!file) throw std::runtime_error(path.string() + ": cannot be read");
  Piece piece;
  piece.file = path.filename().string();
  PieceReader reader(piece);
  for (std::string line; std::getline(file, line);) reader.take(line);
  reader.end();
  return piece;
}

}  // namespace quendal
