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

void putAll(Bytes& bytes, std::size_t offset, const std::vector<std::size_t>& numbers) {
  for (const std::size_t number : numbers) {
    put32(bytes, offset, number);
    offset += 4;
  }
}

Bytes numbers(const auto& list) {
  Bytes bytes(list.size() * 4);
  putAll(bytes, 0, {list.begin(), list.end()});
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

// Directories of types (a named one and the version's), names and languages, each with the counts
// of its named and numbered entries; then data entries and blocks.
Bytes resourceSection(const std::vector<VersionOfLanguage>& versions) {
  constexpr std::uint32_t kDirectory = 0x80000000;
  constexpr std::uint32_t kNames = kDirectory | 32;
  constexpr std::uint32_t kLanguages = kDirectory | 56;
  const std::size_t count = versions.size(), dataEntries = 72 + count * 8;
  Bytes bytes(dataEntries + count * 16);
  putAll(bytes, 0, {0, 0, 0, 1 | 1 << 16, kNames, kLanguages, 16, kNames});
  putAll(bytes, 32, {0, 0, 0, 1 << 16, 1, kLanguages});
  putAll(bytes, 56, {0, 0, 0, count << 16});
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t data = dataEntries + i * 16;
    putAll(bytes, 72 + i * 8, {versions[i].language, data});
    putAll(bytes, data, {kResourceAddress + aligned(bytes.size()), versions[i].block.size()});
    add(bytes, versions[i].block);
  }
  return bytes;
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

  const std::size_t machine = wide ? 0x8664 : 0x14C, magic = wide ? 0x20B : 0x10B;
  const std::size_t traits = wide ? 0x2022 : 0x2102, optionalSize = sections - kOptionalHeader;
  constexpr std::size_t kReadable = 0x40000040;  // initialised data, may be read
  Bytes bytes(kResources);
  put16(bytes, 0, 0x5A4D);
  put32(bytes, 0x3C, kFileHeader);
  putAll(bytes, kFileHeader, {0x4550, machine | 2 << 16, 0, 0, 0, optionalSize | traits << 16});
  put16(bytes, kOptionalHeader, magic);
  putAll(bytes, kOptionalHeader + 32, {0x1000, kFileAlignment});
  putAll(bytes, kOptionalHeader + 56, {kResourceAddress + 0x10000, kFileAlignment});
  putAll(bytes, directories - 4, {16});
  putAll(bytes, directories + 2 * 8, {kResourceAddress, resources.size()});
  putAll(bytes, sections + 8, {kFileAlignment, 0x1000, kFileAlignment, kFileAlignment});
  put32(bytes, sections + 36, kReadable);
  putAll(
      bytes, sections + 48,
      {resources.size(), kResourceAddress, aligned(resources.size(), kFileAlignment), kResources});
  put32(bytes, sections + 76, kReadable);
  bytes.insert(bytes.end(), resources.begin(), resources.end());
  bytes.resize(aligned(bytes.size(), kFileAlignment));
  return bytes;
}

VersionParts englishVersion(std::vector<std::pair<std::u16string, std::u16string>> strings) {
  return {.translations = {0x04B00409}, .tables = {{u"040904B0", std::move(strings)}}};
}

Bytes englishImage(std::vector<std::pair<std::u16string, std::u16string>> strings) {
  return peImage(PeKind::Pe32, {{0x0409, versionBlock(englishVersion(std::move(strings)))}});
}

}  // namespace quendal::test
