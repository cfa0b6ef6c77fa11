#include "platform/posix/version_block.h"

#include <algorithm>
#include <array>
#include <bit>

#include "base/characters.h"
#include "platform/code_page.h"
#include "platform/posix/little_endian.h"

namespace quendal::platform {
namespace {

constexpr std::size_t kHeadSize = 6;  // length, value length, kind of value
constexpr std::size_t kFixedInfoSize = sizeof(FixedFileInfo);

constexpr std::size_t aligned(std::size_t offset) { return (offset + 3) & ~std::size_t{3}; }

}  // namespace

std::optional<VersionEntry> VersionEntry::at(std::span<const std::byte> bytes) {
  if (bytes.size() < kHeadSize) return {};
  VersionEntry entry;
  entry.length_ = load16(bytes, 0);
  const std::size_t size = std::min(entry.length_, bytes.size());
  std::size_t keyEnd = kHeadSize;
  while (keyEnd + 2 <= size && load16(bytes, keyEnd) != 0) keyEnd += 2;
  if (keyEnd + 2 > size) return {};

  entry.bytes_ = bytes.first(size);
  entry.isText_ = load16(bytes, 4) != 0;
  entry.valueOffset_ = std::min(aligned(keyEnd + 2), size);
  const std::size_t unit = entry.isText_ ? 2 : 1;
  entry.valueSize_ = std::min(load16(bytes, 2) * unit, size - entry.valueOffset_);
  return entry;
}

bool VersionEntry::hasKey(std::u16string_view key) const {
  // The key is terminated inside the entry, so a shorter one ends the comparison in time.
  std::size_t offset = kHeadSize;
  for (const char16_t unit : key) {
    if (unit == 0 || asciiLower(load16(bytes_, offset)) != asciiLower(unit)) return false;
    offset += 2;
  }
  return load16(bytes_, offset) == 0;
}

std::optional<VersionEntry> VersionEntry::child(std::u16string_view key) const {
  // Every entry that can be read is longer than its head, so the walk always moves on.
  std::size_t offset = aligned(valueOffset_ + valueSize_);
  while (offset < bytes_.size()) {
    auto entry = at(bytes_.subspan(offset));
    if (!entry || entry->hasKey(key)) return entry;
    offset += aligned(entry->length_);
  }
  return {};
}

std::span<const std::byte> VersionEntry::value() const {
  return bytes_.subspan(valueOffset_, valueSize_);
}

std::u16string VersionEntry::text() const {
  // Some compilers count the value in bytes, some without its NUL: the NUL alone tells its end.
  const auto bytes = bytes_.subspan(valueOffset_);
  if (!isText_) {
    const auto end = std::find(bytes.begin(), bytes.end(), std::byte{0});
    return fromCodePage({reinterpret_cast<const char*>(bytes.data()),
                         static_cast<std::size_t>(end - bytes.begin())});
  }
  std::u16string units;
  for (std::size_t offset = 0; offset + 2 <= bytes.size(); offset += 2) {
    const char16_t unit = load16(bytes, offset);
    if (unit == 0) break;
    units.push_back(unit);
  }
  return fromCodePage(toCodePage(units));
}

std::optional<FixedFileInfo> VersionBlock::fixedInfo() const {
  const auto root = VersionEntry::at(block_);
  if (!root || root->value().size() < kFixedInfoSize) return {};
  std::array<std::uint32_t, kFixedInfoSize / sizeof(std::uint32_t)> fields;
  for (std::size_t i = 0; i < fields.size(); ++i) fields[i] = load32(root->value(), i * 4);
  return std::bit_cast<FixedFileInfo>(fields);
}

std::optional<Translation> VersionBlock::firstTranslation() const {
  const auto root = VersionEntry::at(block_);
  const auto info = root ? root->child(u"VarFileInfo") : std::nullopt;
  const auto list = info ? info->child(u"Translation") : std::nullopt;
  if (!list || list->value().size() < 4) return {};
  return Translation{.language = load16(list->value(), 0), .codePage = load16(list->value(), 2)};
}

std::u16string VersionBlock::string(Translation table, std::u16string_view key) const {
  const auto root = VersionEntry::at(block_);
  const auto tables = root ? root->child(u"StringFileInfo") : std::nullopt;
  const auto strings = tables ? tables->child(tableKey(table)) : std::nullopt;
  const auto entry = strings ? strings->child(key) : std::nullopt;
  return entry ? entry->text() : std::u16string();
}

}  // namespace quendal::platform
