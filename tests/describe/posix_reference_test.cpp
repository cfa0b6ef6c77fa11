// The words of the reference are held against the tables: each gap is found and named.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

#include "describe/reference.h"

namespace quendal {
namespace {

namespace fs = std::filesystem;

/// What is said against the pieces when a text in one of them is another.
std::string complaintAfter(const std::string& file, std::string_view text, std::string_view other) {
  const fs::path folder = fs::path(QUENDAL_BINARY_DIR) / "pieces";
  fs::remove_all(folder);
  fs::copy(fs::path(QUENDAL_SOURCE_DIR) / "docs/reference", folder);
  std::ostringstream content;
  content << std::ifstream(folder / file).rdbuf();
  std::string changed = content.str();
  const std::size_t place = changed.find(text);
  if (place == std::string::npos) return "the text is not there";
  changed.replace(place, text.size(), other);
  std::ofstream(folder / file) << changed;
  try {
    static_cast<void>(referenceText(folder));
    return "none";
  } catch (const std::runtime_error& error) {
    return error.what();
  }
}

TEST(ReferenceTest, EveryGapIsNamed) {
  const struct {
    std::string file;
    std::string_view text, other, complaint;
  } rows[] = {
      {"ClsArray.md", "## Pop", "## Pop", "none"},
      {"ClsArray.md", "## Pop", "## Popp", "Popp: there is nothing of this name"},
      {"ClsArray.md", "## Pop", "## Push", "Push: has two entries"},
      {"ClsArray.md", "arrays.Reverse list", "", "Reverse: is not used in its example"},
      {"ClsArray.md", "- `iStart`", "- `iBegin`", "Slice: says nothing of its parameter iStart"},
      {"JSON.md", "```vbscript\nSet data", "```json\nSet data", "Decode: has no example"},
      {"JSON.md", "```text\npen", "```json\npen", "Decode: does not say what the example prints"},
      {"Enumerations.md", "- `sbNone`", "- `sbSome`", "sbQuoteStyle: says nothing of sbNone"},
      {"JSON.md", "8732 QUENDAL_CLASSIC_ASP.DLL: Expecting : delimiter\n```", "",
       "block has no end"},
      {"JSON.md", "# JSON", "JSON", "the first line: is no heading"},
  };
  for (const auto& row : rows) {
    const std::string complaint = complaintAfter(row.file, row.text, row.other);
    EXPECT_NE(complaint.find(row.complaint), std::string::npos)
        << row.complaint << "\nbut: " << complaint;
  }
}

}  // namespace
}  // namespace quendal
