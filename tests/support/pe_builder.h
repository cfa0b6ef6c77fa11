// Builds small executable images with the version resources that a test wants.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace quendal::test {

using Bytes = std::vector<std::byte>;

struct StringTable {
  std::u16string key;  // "040904B0"
  std::vector<std::pair<std::u16string, std::u16string>> strings;
};

struct VersionParts {
  std::array<std::uint32_t, 13> fixedInfo = {0xFEEF04BD, 0x00010000};
  std::vector<std::uint32_t> translations;  // language in the low word, code page in the high one
  std::vector<StringTable> tables;
};

/// The bytes of one version resource.
Bytes versionBlock(const VersionParts& parts);

struct VersionOfLanguage {
  std::uint16_t language = 0x0409;
  Bytes block;
};

enum class PeKind { Pe32, Pe32Plus };

/// An image whose second section holds the version resources.
Bytes peImage(PeKind kind, std::vector<VersionOfLanguage> versions);

/// The parts of a version whose only table, an English one, holds these strings; the image of it.
VersionParts englishVersion(std::vector<std::pair<std::u16string, std::u16string>> strings);
Bytes englishImage(std::vector<std::pair<std::u16string, std::u16string>> strings);

/// Where `peImage` puts things in the file, for tests that spoil them.
inline constexpr std::size_t kFileHeader = 0x80;
inline constexpr std::size_t kOptionalHeader = kFileHeader + 24;
inline constexpr std::size_t kResources = 0x400;
inline constexpr std::size_t kVersionType = kResources + 24;  // the directory entries:
inline constexpr std::size_t kVersionName = kResources + 48;  // number, then offset
inline constexpr std::size_t kFirstLanguage = kResources + 72;

/// Overwrites a number in place.
void put16(Bytes& bytes, std::size_t offset, std::size_t number);
void put32(Bytes& bytes, std::size_t offset, std::size_t number);

}  // namespace quendal::test
