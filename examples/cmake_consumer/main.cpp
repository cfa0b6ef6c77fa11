// Prints a JSON text. Build it against the installed library with CMake (CMakeLists.txt beside this
// file), or with pkg-config:
//
//   g++ -std=c++20 main.cpp $(pkg-config --cflags --libs quendal_classic_asp)
#include <quendal/classic_asp.h>

#include <cstdio>

int main() {
  const quendal::Object functions = quendal::createObject(u"QUENDAL_REPORTS_ASP.FUNCTIONS");
  const quendal::Object json = quendal::Object::from(functions.get(u"JSON"));
  const quendal::Variant value = json.call(u"Decode", u"{\"report\": 7, \"open\": [true, null]}");
  for (const char16_t c : quendal::textOf(json.call(u"Encode", value)))
    std::putchar(static_cast<char>(c));  // the encoder writes ASCII
  std::putchar('\n');
}
