// What the reference says beyond the classes' tables: one file of Markdown for each class.
//
//   # ClsArray                     the class; notes, the examples' preamble, shared parameters
//
//   ## Push                        a member, or several separated by commas
//   Notes, in any Markdown.
//   - `Arr`: the array.            what a parameter is for
//   Result: what comes back.
//   Errors: which, and when.
//   ```vbscript                    the example
//   ```text                        what it prints
#pragma once

#include <istream>
#include <map>
#include <string>
#include <vector>

namespace quendal {

/// The notes on a class, or on one or more members. Texts are without a line end at their end.
struct PieceEntry {
  std::vector<std::string> names;               // as the heading lists them
  std::map<std::string, std::string> meanings;  // of parameters, or of an enumeration's members
  std::string notes;
  std::string result;
  std::string errors;
  std::string example;  // for the class: the preamble of its examples
  std::string output;
};

struct Piece {
  PieceEntry opening;
  std::vector<PieceEntry> entries;
};

/// Throws std::runtime_error, with the line's number, for what is not laid out so.
[[nodiscard]] Piece readPiece(std::istream& text);

}  // namespace quendal
