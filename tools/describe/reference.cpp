#include "describe/reference.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>

#include "base/text.h"
#include "core/enumerations.h"

namespace quendal {
namespace {

std::u16string widen(std::string_view text) { return {text.begin(), text.end()}; }

std::ifstream opened(const std::filesystem::path& path) {
  std::ifstream file(path);
  if (!file) throw std::runtime_error(path.string() + ": cannot be read");
  return file;
}

Piece pieceAt(const std::filesystem::path& path) {
  std::ifstream file = opened(path);
  try {
    return readPiece(file);
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(path.string() + ": " + error.what());
  }
}

/// Collects what a piece lacks and what it has too much.
class Gaps {
 public:
  explicit Gaps(std::string piece) : piece_(std::move(piece)) {}

  void add(const std::string& about, const std::string& what) {
    text_ += piece_ + ": " + about + ": " + what + '\n';
  }
  [[nodiscard]] const std::string& text() const noexcept { return text_; }

 private:
  std::string piece_;
  std::string text_;
};

/// Every name must be in one heading, and every heading name something.
void compareNames(const std::set<std::string>& names, const Piece& piece, Gaps& gaps) {
  std::set<std::string> seen;
  for (const PieceEntry& entry : piece.entries)
    for (const std::string& name : entry.names) {
      if (!names.contains(name)) gaps.add(name, "there is nothing of this name");
      if (!seen.insert(name).second) gaps.add(name, "has two entries");
    }
  for (const std::string& name : names)
    if (!seen.contains(name)) gaps.add(name, "has no entry");
}

void compareParameters(const DescribedClass& described, Gaps& gaps) {
  std::set<std::string> used;
  for (const PieceEntry& entry : described.piece.entries) {
    std::set<std::string> own;
    for (const MemberRow* member : described.membersOf(entry))
      for (const ParameterRow& parameter : member->parameters()) own.insert(narrow(parameter.name));
    for (const auto& [name, meaning] : entry.meanings)
      if (!own.contains(name)) gaps.add(entry.names[0], "has no parameter " + name);
    for (const std::string& name : own) {
      if (entry.meanings.contains(name)) continue;
      if (!described.piece.opening.meanings.contains(name))
        gaps.add(entry.names[0], "says nothing of its parameter " + name);
      used.insert(name);
    }
  }
  for (const auto& [name, meaning] : described.piece.opening.meanings)
    if (!used.contains(name)) gaps.add("opening", "no entry needs the parameter " + name);
}

void checkExamples(const Piece& piece, Gaps& gaps) {
  for (const PieceEntry& entry : piece.entries) {
    const std::string& about = entry.names[0];
    if (piece.opening.example.empty()) {
      if (!entry.example.empty()) gaps.add(about, "has an example, but the class no preamble");
      continue;
    }
    if (entry.example.empty()) gaps.add(about, "has no example");
    if (entry.output.empty()) gaps.add(about, "does not say what the example prints");
    for (const std::string& name : entry.names)
      if (!containsNoCase(widen(entry.example), widen("." + name)))
        gaps.add(name, "is not used in its example");
  }
}

void checkClass(const DescribedClass& described, Gaps& gaps) {
  if (described.piece.opening.names[0] != narrow(described.description.identity().name))
    gaps.add(described.piece.opening.names[0], "is not the class of this file");
  std::set<std::string> names;
  for (const MemberRow& member : described.description.members()) names.insert(narrow(member.name));
  compareNames(names, described.piece, gaps);
  compareParameters(described, gaps);
  checkExamples(described.piece, gaps);
}

void checkEnumerations(const Piece& piece, Gaps& gaps) {
  std::set<std::string> names;
  for (const EnumerationDescription& enumeration : enumerations()) {
    names.insert(narrow(enumeration.name));
    for (const PieceEntry& entry : piece.entries) {
      if (entry.names[0] != narrow(enumeration.name)) continue;
      std::set<std::string> members;
      for (const EnumerationMember& member : enumeration.members) {
        members.insert(narrow(member.name));
        if (!entry.meanings.contains(narrow(member.name)))
          gaps.add(entry.names[0], "says nothing of " + narrow(member.name));
      }
      for (const auto& [name, meaning] : entry.meanings)
        if (!members.contains(name)) gaps.add(entry.names[0], "has no member " + name);
    }
  }
  compareNames(names, piece, gaps);
}

}  // namespace

std::string narrow(std::u16string_view text) {
  std::string result;
  for (const char16_t c : text) result += static_cast<char>(c);
  return result;
}

std::vector<const MemberRow*> DescribedClass::membersOf(const PieceEntry& entry) const {
  std::vector<const MemberRow*> rows;
  for (const MemberRow& member : description.members())
    if (std::ranges::find(entry.names, narrow(member.name)) != entry.names.end())
      rows.push_back(&member);
  return rows;
}

Reference readReference(const std::filesystem::path& folder) {
  Reference reference;
  std::ostringstream introduction;
  introduction << opened(folder / "Introduction.md").rdbuf();
  reference.introduction = introduction.str();

  std::string gaps;
  for (const CatalogueEntry& entry : catalogue()) {
    const std::string name = narrow(entry.description.identity().name);
    reference.classes.push_back({entry.description, pieceAt(folder / (name + ".md"))});
    Gaps found(name + ".md");
    checkClass(reference.classes.back(), found);
    gaps += found.text();
  }
  reference.enumerations = pieceAt(folder / "Enumerations.md");
  Gaps found("Enumerations.md");
  checkEnumerations(reference.enumerations, found);
  gaps += found.text();
  if (!gaps.empty()) throw std::runtime_error(gaps);
  return reference;
}

}  // namespace quendal
