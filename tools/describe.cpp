// Prints what is made from the classes' tables: `describe idl`.
#include <cstdio>
#include <string_view>

#include "component/interface_text.h"

int main(int argc, char** argv) {
  const std::string_view what = argc > 1 ? argv[1] : "";
  if (what != "idl") {
    std::fprintf(stderr, "usage: describe idl\n");
    return 2;
  }
  std::fputs(quendal::interfaceText().c_str(), stdout);
  return 0;
}
