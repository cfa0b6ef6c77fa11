// Writes the start corpus of the version resource fuzzer: small images of every kind that the
// reader treats in its own way, sound ones and spoilt ones. Usage: make_version_seeds FOLDER
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include "tests/support/pe_builder.h"

namespace {

using quendal::test::Bytes;
using quendal::test::PeKind;
using quendal::test::put16;
using quendal::test::put32;
using quendal::test::VersionParts;

constexpr std::uint32_t kEnglishUnicode = 0x04B00409;
constexpr std::uint32_t kGermanUnicode = 0x04B00407;

VersionParts ordinary() {
  VersionParts parts;
  parts.fixedInfo = {0xFEEF04BD, 0x00010000, 0x00060001, 0x1DB1446A, 0x00010000, 5, 0x3F,
                     0x21,       0x00040004, 3,          7,          0,          0};
  parts.translations = {kEnglishUnicode};
  parts.tables = {{u"040904B0",
                   {{u"CompanyName", u"Example Works"},
                    {u"FileDescription", u"Na\u00EFve \u20AC test \u4E00"},
                    {u"Comments", u""},
                    {u"ProductVersion", u"6.1.7601"}}}};
  return parts;
}

Bytes image(const VersionParts& parts, PeKind kind = PeKind::Pe32) {
  return peImage(kind, {{0x0409, versionBlock(parts)}});
}

VersionParts ofLanguage(std::u16string_view name) {
  VersionParts parts = ordinary();
  parts.tables[0].strings[0].second = name;
  return parts;
}

std::map<std::string, Bytes> seeds() {
  std::map<std::string, Bytes> files;
  files["pe32"] = image(ordinary());
  files["pe32plus"] = image(ordinary(), PeKind::Pe32Plus);

  VersionParts parts = ordinary();
  parts.translations = {kGermanUnicode, kEnglishUnicode};
  parts.tables.insert(parts.tables.begin(), {u"040704b0", {{u"ProductName", u"Beispiel"}}});
  files["no_company_name"] = image(parts);

  parts = ordinary();
  parts.translations.clear();
  files["no_translation"] = image(parts);

  parts = ordinary();
  parts.tables[0].strings.emplace_back(u"LegalCopyright", std::u16string(3000, u'x'));
  files["long_string"] = image(parts);

  const Bytes german = versionBlock(ofLanguage(u"German"));
  const Bytes english = versionBlock(ofLanguage(u"English"));
  const Bytes plainEnglish = versionBlock(ofLanguage(u"English without country"));
  const Bytes neutral = versionBlock(ofLanguage(u"Neutral"));
  files["languages_neutral"] = peImage(
      PeKind::Pe32, {{0x0407, german}, {0x0409, english}, {0, neutral}, {0x0009, plainEnglish}});
  files["languages_english"] =
      peImage(PeKind::Pe32, {{0x0407, german}, {0x0409, english}, {0x0009, plainEnglish}});
  files["languages_plain"] = peImage(PeKind::Pe32, {{0x0007, german}, {0x0009, plainEnglish}});
  files["languages_first"] = peImage(PeKind::Pe32, {{0x0407, german}, {0x040C, neutral}});

  Bytes bytes = image(ordinary());
  put32(bytes, quendal::test::kVersionType + 4, 0x80000000);  // back to the types
  files["looped_directory"] = bytes;
  bytes = image(ordinary());
  put16(bytes, quendal::test::kResources + 14, 0xFFFF);
  files["lying_count"] = bytes;
  bytes = image(ordinary());
  put16(bytes, quendal::test::kFileHeader + 6, 0xFFFF);
  files["lying_sections"] = bytes;
  bytes = image(ordinary());
  bytes.resize(bytes.size() - 0x300);
  files["cut_short"] = bytes;

  Bytes block = versionBlock(ordinary());
  put16(block, 0, 0xFFFF);
  put16(block, 2, 0xFFFF);
  files["lying_lengths"] = peImage(PeKind::Pe32, {{0x0409, block}});
  block = versionBlock(ordinary());
  block.resize(block.size() - 3);
  files["odd_length"] = peImage(PeKind::Pe32, {{0x0409, block}});
  return files;
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) {
    std::fputs("usage: make_version_seeds FOLDER\n", stderr);
    return 2;
  }
  const std::filesystem::path folder = arguments[1];
  std::filesystem::create_directories(folder);
  for (const auto& [name, bytes] : seeds()) {
    std::ofstream file(folder / name, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) {
      std::fprintf(stderr, "cannot write %s\n", name.c_str());
      return 1;
    }
  }
}
