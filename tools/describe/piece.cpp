#include "describe/piece.h"

#include <regex>
#include <stdexcept>

namespace quendal {
namespace {

std::vector<std::string> namesOf(const std::string& heading) {
  static const std::regex name("[^, ]+");
  return {std::sregex_token_iterator(heading.begin(), heading.end(), name), {}};
}

void appendLine(std::string& text, const std::string& line) {
  if (!text.empty()) text += '\n';
  text += line;
}

/// Reads line by line; a paragraph goes on in the field that its first line chose.
class PieceReader {
 public:
  explicit PieceReader(std::istream& text) : text_(text) {}

  Piece read() {
    while (nextLine()) {
      if (line_.starts_with("```vbscript"))
        takeBlock(entry().example);
      else if (line_.starts_with("```text"))
        takeBlock(entry().output);
      else if (line_.starts_with("```"))
        takeVerbatimBlock();
      else
        takeLine();
    }
    if (piece_.opening.names.size() != 1) fail("the first line is no heading \"# Name\"");
    return std::move(piece_);
  }

 private:
  PieceEntry& entry() { return piece_.entries.empty() ? piece_.opening : piece_.entries.back(); }

  bool nextLine() {
    ++number_;
    return static_cast<bool>(std::getline(text_, line_));
  }

  [[noreturn]] void fail(const std::string& what) const {
    throw std::runtime_error("line " + std::to_string(number_) + ": " + what);
  }

  void takeLine() {
    static const std::regex meaning("- `(\\w+)`: (.+)");
    static const std::regex field("(Result|Errors): (.+)");
    std::smatch match;
    if (line_.starts_with("# ")) {
      if (number_ != 1) fail("a second heading of the first level");
      piece_.opening.names = namesOf(line_.substr(2));
    } else if (line_.starts_with("## ")) {
      piece_.entries.emplace_back().names = namesOf(line_.substr(3));
      paragraph_ = nullptr;
    } else if (std::regex_match(line_, match, meaning)) {
      begin(entry().meanings[match[1]], match[2]);
    } else if (std::regex_match(line_, match, field)) {
      begin(match[1] == "Result" ? entry().result : entry().errors, match[2]);
    } else if (line_.empty()) {
      paragraph_ = nullptr;
    } else if (paragraph_ != nullptr) {
      appendLine(*paragraph_, line_);
    } else {
      std::string& notes = entry().notes;
      if (!notes.empty()) notes += "\n\n";
      notes += line_;
      paragraph_ = &notes;
    }
  }

  void begin(std::string& target, const std::string& text) {
    if (!target.empty()) fail("said twice");
    target = text;
    paragraph_ = &target;
  }

  void takeBlock(std::string& target) {
    if (!target.empty()) fail("a second block of this kind");
    paragraph_ = nullptr;
    while (nextLine()) {
      if (line_ == "```") return;
      appendLine(target, line_);
    }
    fail("the block has no end");
  }

  void takeVerbatimBlock() {
    std::string block = line_, rest;
    takeBlock(rest);
    std::string& notes = entry().notes;
    if (!notes.empty()) notes += "\n\n";
    notes += block + '\n' + rest + "\n```";
  }

  std::istream& text_;
  std::string line_;
  int number_ = 0;
  Piece piece_;
  std::string* paragraph_ = nullptr;
};

}  // namespace

Piece readPiece(std::istream& text) { return PieceReader(text).read(); }

}  // namespace quendal
