// The tree inside a version resource: entries with a key, a value and children, all lengths in
// 16 bits. It is walked where it lies; every length is cut to the entry around it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/version_resource.h"

namespace quendal::platform {

/// One entry of the tree; refers to the bytes of the block.
class VersionEntry {
 public:
  /// The entry at the start of `bytes`, which end where the entry around it ends. Nothing when
  /// there is no room for its head or its key is not terminated.
  [[nodiscard]] static std::optional<VersionEntry> at(std::span<const std::byte> bytes);

  /// The first child with that key; ASCII letters match without case.
  [[nodiscard]] std::optional<VersionEntry> child(std::u16string_view key) const;

  /// The value as it lies there, as far as its length and the entry go.
  [[nodiscard]] std::span<const std::byte> value() const;

  /// The value as text through the code page, up to its first NUL or the end of the entry.
  [[nodiscard]] std::u16string text() const;

 private:
  VersionEntry() = default;
  [[nodiscard]] bool hasKey(std::u16string_view key) const;

  std::span<const std::byte> bytes_;  // the whole entry, cut to what is there
  std::size_t length_ = 0;            // as the entry states it
  std::size_t valueOffset_ = 0;
  std::size_t valueSize_ = 0;
  bool isText_ = false;
};

/// A version resource over its block of bytes.
class VersionBlock final : public VersionResource {
 public:
  explicit VersionBlock(std::vector<std::byte> block) : block_(std::move(block)) {}

  [[nodiscard]] std::optional<FixedFileInfo> fixedInfo() const override;
  [[nodiscard]] std::optional<Translation> firstTranslation() const override;
  [[nodiscard]] std::u16string string(Translation table, std::u16string_view key) const override;

 private:
  std::vector<std::byte> block_;
};

}  // namespace quendal::platform
