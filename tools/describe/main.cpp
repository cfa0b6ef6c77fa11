// Prints or writes what is made from the classes' tables.
#include <cstdio>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "component/interface_text.h"
#include "describe/reference.h"

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  const std::string what = arguments.empty() ? "" : arguments[0];
  try {
    if (what == "idl" && arguments.size() == 1) {
      std::cout << quendal::interfaceText();
    } else if (what == "reference" && arguments.size() == 2) {
      std::cout << quendal::referenceText(arguments[1]);
    } else if (what == "examples" && arguments.size() == 3) {
      quendal::writeExamples(arguments[1], arguments[2]);
    } else {
      std::cerr
          << "usage: describe idl                      the interface definition\n"
             "       describe reference PIECES         the reference, with the texts in PIECES\n"
             "       describe examples PIECES FOLDER   a page of examples for each class\n";
      return 2;
    }
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
  return 0;
}
