// Prints one line for each executable image whose name is read from the standard input: the name,
// a tab, and all that the library tells of its version, escaped to ASCII. Files that are not PE
// images are left out. The two homes' outputs are compared with each other.
#include <cstdint>
#include <fstream>
#include <iostream>
#include <string>

#include "base/text.h"
#include "base/utf8.h"
#include "versioninfo/version_record.h"

namespace {

using quendal::versioninfo::VersionRecord;

bool isPeImage(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  char start[64] = {};
  if (!file.read(start, sizeof start) || start[0] != 'M' || start[1] != 'Z') return false;
  std::uint32_t header = 0;
  for (int i = 3; i >= 0; --i) header = header << 8 | static_cast<unsigned char>(start[0x3C + i]);
  char signature[4] = {};
  file.seekg(header);
  return file.read(signature, sizeof signature) &&
         std::string(signature, 4) == std::string("PE\0\0", 4);
}

std::string escaped(std::u16string_view text) {
  std::string line = "|";
  for (const char16_t unit : text) {
    if (unit >= 0x20 && unit < 0x7F && unit != u'|' && unit != u'\\') {
      line += static_cast<char>(unit);
    } else {
      line += "\\u" + quendal::toUtf8(quendal::hexText(unit, 4));
    }
  }
  return line;
}

std::string line(const VersionRecord& record) {
  if (!record.available) return "none";
  std::string text = "version";
  for (const auto& field : {record.verStructure, record.verFile, record.verProduct,
                            record.fileFlags, record.fileOs, record.fileType, record.fileSubtype}) {
    text += escaped(field);
  }
  for (const auto& value : record.values) text += escaped(value);
  return text;
}

}  // namespace

int main() {
  for (std::string name; std::getline(std::cin, name);) {
    if (!name.empty() && name.back() == '\r') name.pop_back();
    if (!isPeImage(name)) continue;
    const auto path = quendal::fromUtf8(name);
    std::cout << name << '\t' << line(quendal::versioninfo::readVersionRecord(path)) << '\n';
  }
}
