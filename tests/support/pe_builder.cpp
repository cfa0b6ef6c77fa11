#include "tests/support/pe_builder.h"

#include <algorithm>
#include <string_view>

namespace quendal::test {
namespace {

constexpr std::size_t kResourceAddress = 0x2000;
constexpr std::size_t kFileAlignment = 0x200;

constexpr std::size_t aligned(std::size_t size, std::size_t step = 4) {
  return (size + step - 1) / step * step;
}

// Appends, with padding before it, which every part of the version tree has.
void add(Bytes& bytes, const Bytes& part) {
  bytes.resize(aligned(bytes.size()));
  bytes.insert(bytes.end(), part.begin(), part.end());
}

Bytes terminated(std::u16string_view text) {
  Bytes bytes(text.size() * 2 + 2);
  for (std::size_t i = 0; i < text.size(); ++i) put16(bytes, i * 2, text[i]);
  return bytes;
}

Bytes numbers(const auto& list) {
  Bytes bytes(list.size() * 4);
  for (std::size_t i = 0; i < list.size(); ++i) put32(bytes, i * 4, list[i]);
  return bytes;
}

// One entry of the version tree; a text counts its value in characters.
Bytes entry(std::u16string_view key, bool isText, const Bytes& value,
            const std::vector<Bytes>& children = {}) {
  Bytes bytes(6);
  const Bytes name = terminated(key);
  bytes.insert(bytes.end(), name.begin(), name.end());
  if (!value.empty()) add(bytes, value);
  for (const Bytes& child : children) add(bytes, child);
  put16(bytes, 0, bytes.size());
  put16(bytes, 2, isText ? value.size() / 2 : value.size());
  put16(bytes, 4, isText ? 1 : 0);
  return bytes;
}

// A header with the counts of its named and numbered entries.
void putDirectory(Bytes& bytes, std::size_t offset, std::size_t named, std::size_t numbered) {
  put16(bytes, offset + 12, named);
  put16(bytes, offset + 14, numbered);
}

void putPair(Bytes& bytes, std::size_t offset, std::size_t first, std::size_t second) {
  put32(bytes, offset, first);
  put32(bytes, offset + 4, second);
}

// Directories of types (a named one and the version's), names and languages, data entries, blocks.
Bytes resourceSection(const std::vector<VersionOfLanguage>& versions) {
  constexpr std::size_t kDirectory = 0x80000000;
  constexpr std::size_t kNames = 32;
  constexpr std::size_t kLanguages = 56;
  const std::size_t dataEntries = kLanguages + 16 + versions.size() * 8;
  Bytes bytes(dataEntries + versions.size() * 16);
  putDirectory(bytes, 0, 1, 1);
  putPair(bytes, 16, kDirectory | kNames, kDirectory | kLanguages);
  putPair(bytes, 24, 16, kDirectory | kNames);
  putDirectory(bytes, kNames, 0, 1);
  putPair(bytes, kNames + 16, 1, kDirectory | kLanguages);
  putDirectory(bytes, kLanguages, 0, versions.size());
  for (std::size_t i = 0; i < versions.size(); ++i) {
    const std::size_t data = dataEntries + i * 16;
    putPair(bytes, kLanguages + 16 + i * 8, versions[i].language, data);
    putPair(bytes, data, kResourceAddress + aligned(bytes.size()), versions[i].block.size());
    add(bytes, versions[i].block);
  }
  return bytes;
}

void putSection(Bytes& bytes, std::size_t offset, std::size_t size, std::size_t address,
                std::size_t start) {
  putPair(bytes, offset + 8, size, address);
  putPair(bytes, offset + 16, aligned(size, kFileAlignment), start);
  put32(bytes, offset + 36, 0x40000040);  // initialised data, may be read
}

}  // namespace

void put16(Bytes& bytes, std::size_t offset, std::size_t number) {
  bytes.at(offset) = static_cast<std::byte>(number & 0xFF);
  bytes.at(offset + 1) = static_cast<std::byte>(number >> 8 & 0xFF);
}

void put32(Bytes& bytes, std::size_t offset, std::size_t number) {
  put16(bytes, offset, number);
  put16(bytes, offset + 2, number >> 16);
}

Bytes versionBlock(const VersionParts& parts) {
  std::vector<Bytes> tables;
  for (const StringTable& table : parts.tables) {
    std::vector<Bytes> strings;
    for (const auto& [key, value] : table.strings) {
      strings.push_back(entry(key, true, terminated(value)));
    }
    tables.push_back(entry(table.key, true, {}, strings));
  }
  const Bytes translation = entry(u"Translation", false, numbers(parts.translations));
  return entry(
      u"VS_VERSION_INFO", false, numbers(parts.fixedInfo),
      {entry(u"StringFileInfo", true, {}, tables), entry(u"VarFileInfo", true, {}, {translation})});
}

Bytes peImage(PeKind kind, std::vector<VersionOfLanguage> versions) {
  std::sort(versions.begin(), versions.end(),
            [](const auto& a, const auto& b) { return a.language < b.language; });
  const Bytes resources = resourceSection(versions);
  const bool wide = kind == PeKind::Pe32Plus;
  const std::size_t directories = kOptionalHeader + (wide ? 112 : 96);
  const std::size_t sections = directories + 16 * 8;

  Bytes bytes(kResources);
  put16(bytes, 0, 0x5A4D);
  put32(bytes, 0x3C, kFileHeader);
  put32(bytes, kFileHeader, 0x4550);
  put16(bytes, kFileHeader + 4, wide ? 0x8664 : 0x14C);
  put16(bytes, kFileHeader + 6, 2);
  put16(bytes, kFileHeader + 20, sections - kOptionalHeader);
  put16(bytes, kFileHeader + 22, wide ? 0x2022 : 0x2102);
  put16(bytes, kOptionalHeader, wide ? 0x20B : 0x10B);
  putPair(bytes, kOptionalHeader + 32, 0x1000, kFileAlignment);
  putPair(bytes, kOptionalHeader + 56, kResourceAddress + 0x10000, kFileAlignment);
  put32(bytes, directories - 4, 16);
  putPair(bytes, directories + 2 * 8, kResourceAddress, resources.size());
  putSection(bytes, sections, kFileAlignment, 0x1000, kFileAlignment);
  putSection(bytes, sections + 40, resources.size(), kResourceAddress, kResources);
  bytes.insert(bytes.end(), resources.begin(), resources.end());
  bytes.resize(aligned(bytes.size(), kFileAlignment));
  return bytes;
}

}  // namespace quendal::test
