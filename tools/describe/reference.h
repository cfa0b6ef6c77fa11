// What is made of the classes' tables and the words about them.
#pragma once

#include <filesystem>
#include <string>

namespace quendal {

/// The page of Markdown, from Introduction.md, Enumerations.md and a piece for each class in a
/// folder. Throws std::runtime_error for the first gap: a member, parameter or example without
/// words, or words about something that is not there.
[[nodiscard]] std::string referenceText(const std::filesystem::path& pieces);

/// Writes each class's examples as one page for the script host, and beside it what that prints. A
/// class that scripts cannot reach has none.
void writeExamples(const std::filesystem::path& pieces, const std::filesystem::path& folder);

}  // namespace quendal
