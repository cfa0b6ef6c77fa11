// The words of the reference are held against the tables: each gap is found and named.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "describe/reference.h"

namespace quendal {
namespace {

namespace fs = std::filesystem;

const fs::path kPieces = fs::path(QUENDAL_SOURCE_DIR) / "docs/reference";

/// What is said against the pieces when a text in one of them is another.
std::string complaintAfter(const std::string& file, std::string_view text, std::string_view other) {
  const fs::path folder = fs::path(QUENDAL_BINARY_DIR) / "pieces";
  fs::remove_all(folder);
  fs::copy(kPieces, folder);
  std::ostringstream content;
  content << std::ifstream(folder / file).rdbuf();
  std::string changed = content.str();
  const std::size_t place = changed.find(text);
  if (place == std::string::npos) return "the text is not there: " + std::string(text);
  changed.replace(place, text.size(), other);
  std::ofstream(folder / file) << changed;
  try {
    static_cast<void>(readReference(folder));
    return {};
  } catch (const std::runtime_error& error) {
    return error.what();
  }
}

TEST(ReferenceTest, EveryGapIsNamed) {
  EXPECT_NO_THROW(static_cast<void>(readReference(kPieces)));
  const struct {
    std::string file;
    std::string_view text, other, complaint;
  } rows[] = {
      {"ClsArray.md", "## Pop", "## Popp", "ClsArray.md: Popp: there is nothing of this name"},
      {"ClsArray.md", "## Pop", "## Popp", "ClsArray.md: Pop: has no entry"},
      {"ClsArray.md", "## Pop", "## Push", "ClsArray.md: Push: has two entries"},
      {"ClsArray.md", "arrays.Reverse list", "", "Reverse: is not used in its example"},
      {"ClsArray.md", "- `iStart`", "- `iBegin`", "Slice: has no parameter iBegin"},
      {"ClsArray.md", "- `iStart`", "- `iBegin`", "Slice: says nothing of its parameter iStart"},
      {"Concat.md", "- `IN_sbQuoteType`", "- `x`", "opening: no entry needs the parameter x"},
      {"JSON.md", "```vbscript\nSet data", "```json\nSet data", "Decode: has no example"},
      {"JSON.md", "```text\npen", "```json\npen", "Decode: does not say what the example prints"},
      {"VersionInfo.md", "## Available", "## Available\n```vbscript\nx\n```\n",
       "Available: has an example, but the class no preamble"},
      {"Enumerations.md", "- `sbNone`", "- `sbSome`", "sbQuoteStyle: says nothing of sbNone"},
      {"Enumerations.md", "## LOG_LEVEL", "## LOG_LEVELS", "LOG_LEVEL: has no entry"},
      {"JSON.md", "# JSON", "JSON", "the first line is no heading"},
      {"JSON.md", "# JSON", "# Concat", "Concat: is not the class of this file"},
      {"JSON.md", "## Encode", "## ", "a heading without a name"},
      {"JSON.md", "## Encode", "# Encode", "a second heading of the first level"},
      {"JSON.md", "```\n\n## Decode", "## Decode", "a second block of this kind"},
      {"ClsDictionary.md", "\"Apple\":2}\n```", "\"Apple\":2}", "the block has no end"},
      {"JSON.md", "Result: The value.", "Result: a\n\nResult: b", "said twice"},
  };
  for (const auto& row : rows)
    EXPECT_NE(complaintAfter(row.file, row.text, row.other).find(row.complaint), std::string::npos)
        << row.complaint << "\nbut: " << complaintAfter(row.file, row.text, row.other);
}

}  // namespace
}  // namespace quendal
