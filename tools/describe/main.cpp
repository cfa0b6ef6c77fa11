// Prints or writes what is made from the classes' tables.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "component/interface_text.h"
#include "describe/reference.h"

namespace {

constexpr const char* kUsage =
    "usage: describe idl                      the interface definition\n"
    "       describe reference PIECES         the reference, with the texts in the folder PIECES\n"
    "       describe examples PIECES FOLDER   writes the examples to FOLDER, a page for each "
    "class\n";

void print(const std::string& text) { std::fwrite(text.data(), 1, text.size(), stdout); }

void write(const std::filesystem::path& path, const std::string& text) {
  std::ofstream file(path);
  file.exceptions(std::ios::failbit | std::ios::badbit);
  file << text << std::flush;
}

void writeExamples(const std::filesystem::path& pieces, const std::filesystem::path& folder) {
  std::filesystem::create_directories(folder);
  for (const quendal::DescribedClass& described : quendal::readReference(pieces).classes) {
    const std::string page = quendal::examplePage(described);
    if (page.empty()) continue;
    const std::string name =
        "reference_" + quendal::narrow(described.description.identity().name) + ".vbs";
    write(folder / name, page);
    write(folder / (name + ".expected"), quendal::exampleOutput(described));
  }
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  const std::string what = arguments.empty() ? "" : arguments[0];
  try {
    if (what == "idl" && arguments.size() == 1) {
      print(quendal::interfaceText());
    } else if (what == "reference" && arguments.size() == 2) {
      print(quendal::referenceText(quendal::readReference(arguments[1])));
    } else if (what == "examples" && arguments.size() == 3) {
      writeExamples(arguments[1], arguments[2]);
    } else {
      std::fputs(kUsage, stderr);
      return 2;
    }
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
  return 0;
}
