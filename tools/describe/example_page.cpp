// A class's examples in one page: each in a procedure of its own, so that they share nothing but
// the preamble, and behind a line that names its members.
#include <sstream>

#include "describe/reference.h"

namespace quendal {
namespace {

std::string headingOf(const PieceEntry& entry) {
  std::string heading = "==";
  for (const std::string& name : entry.names) heading += ' ' + name;
  return heading;
}

std::string indented(const std::string& text) {
  std::istringstream lines(text);
  std::string result;
  for (std::string line; std::getline(lines, line);)
    result += line.empty() ? "\n" : "  " + line + '\n';
  return result;
}

}  // namespace

std::string examplePage(const DescribedClass& described) {
  const Piece& piece = described.piece;
  if (piece.opening.example.empty()) return {};
  std::string page = piece.opening.example + "\n";
  int number = 0;
  for (const PieceEntry& entry : piece.entries) {
    const std::string name = "Example" + std::to_string(++number);
    page += "\nSub " + name + '\n' + indented(entry.example) + "End Sub\nWScript.Echo \"" +
            headingOf(entry) + "\"\n" + name + '\n';
  }
  return page;
}

std::string exampleOutput(const DescribedClass& described) {
  std::string output;
  if (described.piece.opening.example.empty()) return output;
  for (const PieceEntry& entry : described.piece.entries)
    output += headingOf(entry) + '\n' + entry.output + '\n';
  return output;
}

}  // namespace quendal
