#include "describe/piece.h"

#include <optional>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace quendal {
namespace {

/// The names of a heading, "A, B".
std::vector<std::string> namesOf(std::string heading) {
  std::erase(heading, ' ');
  std::istringstream list(heading);
  std::vector<std::string> names;
  for (std::string name; std::getline(list, name, ',');) names.push_back(name);
  return names;
}

/// "- `Name`: text" in two; nothing for any other line.
std::optional<std::pair<std::string, std::string>> meaningOf(const std::string& line) {
  constexpr std::string_view kBegin = "- `", kMiddle = "`: ";
  const std::size_t end = line.find(kMiddle);
  if (!line.starts_with(kBegin) || end == std::string::npos) return {};
  return {{line.substr(kBegin.size(), end - kBegin.size()), line.substr(end + kMiddle.size())}};
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
    constexpr std::string_view kResult = "Result: ", kErrors = "Errors: ";
    if (line_.starts_with("# ")) {
      if (number_ != 1) fail("a second heading of the first level");
      piece_.opening.names = namesOf(line_.substr(2));
    } else if (line_.starts_with("## ")) {
      piece_.entries.emplace_back().names = namesOf(line_.substr(3));
      if (entry().names.empty()) fail("a heading without a name");
      paragraph_ = nullptr;
    } else if (const auto meaning = meaningOf(line_)) {
      begin(entry().meanings[meaning->first], meaning->second);
    } else if (line_.starts_with(kResult)) {
      begin(entry().result, line_.substr(kResult.size()));
    } else if (line_.starts_with(kErrors)) {
      begin(entry().errors, line_.substr(kErrors.size()));
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
