// The classes with the words that the reference has for them.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "component/catalogue.h"
#include "describe/piece.h"

namespace quendal {

/// Everything in the tables is ASCII.
[[nodiscard]] std::string narrow(std::u16string_view text);

/// A class with the notes on it.
struct DescribedClass {
  const ClassDescription& description;
  Piece piece;

  /// The rows of the members that an entry is about, in slot order.
  [[nodiscard]] std::vector<const MemberRow*> membersOf(const PieceEntry& entry) const;
};

struct Reference {
  std::string introduction;
  std::vector<DescribedClass> classes;
  Piece enumerations;
};

/// Reads Introduction.md, Enumerations.md and a piece for each class from a folder. Throws
/// std::runtime_error that names every gap: a member, parameter or example without words, and
/// words about something that is not there.
[[nodiscard]] Reference readReference(const std::filesystem::path& folder);

/// The page of Markdown.
[[nodiscard]] std::string referenceText(const Reference& reference);

/// A class's examples as one page for the script host, and what it prints. Empty for a class that
/// scripts cannot reach, whose piece has no preamble.
[[nodiscard]] std::string examplePage(const DescribedClass& described);
[[nodiscard]] std::string exampleOutput(const DescribedClass& described);

}  // namespace quendal
