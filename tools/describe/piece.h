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

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace quendal {

/// The words on a class, or on one or more members. Texts have no line end at their end.
struct Entry {
  std::vector<std::string> names;               // as the heading lists them
  std::map<std::string, std::string> meanings;  // of parameters, or of an enumeration's members
  std::string notes, result, errors;
  std::string example;  // for the class: the preamble of its examples
  std::string output;
};

struct Piece {
  std::string file;
  Entry opening;
  std::vector<Entry> entries;

  /// The entry for a name; throws std::runtime_error when there is none.
  [[nodiscard]] const Entry& entryOf(const std::string& name) const;
  /// Throws std::runtime_error that tells what is wrong with the words about something.
  [[noreturn]] void fail(const std::string& about, const std::string& what) const;
};

/// Throws std::runtime_error when the file cannot be read or is not laid out so.
[[nodiscard]] Piece readPiece(const std::filesystem::path& path);

}  // namespace quendal
