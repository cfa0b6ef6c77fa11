// Everything that is told about the version of one file, as text.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "core/enumerations.h"

namespace quendal::platform {
class VersionResource;
}

namespace quendal::versioninfo {

inline constexpr std::size_t kVersionStringCount = 15;

/// The name to show for a value ("Company Name"); empty for a number outside the enumeration.
[[nodiscard]] std::u16string_view predefinedName(VersionString which) noexcept;

/// The version of one file. What the file does not tell is empty.
struct VersionRecord {
  bool available = false;  // the file has a version resource and it was read
  std::u16string verStructure;
  std::u16string verFile;
  std::u16string verProduct;
  std::u16string fileFlags;
  std::u16string fileOs;
  std::u16string fileType;
  std::u16string fileSubtype;
  std::array<std::u16string, kVersionStringCount> values;

  /// A value by its number; empty for a number outside the enumeration.
  [[nodiscard]] std::u16string_view value(VersionString which) const noexcept;
};

/// Reads a file. A file that cannot be read or has no version resource gives a record that is
/// empty and not available.
[[nodiscard]] VersionRecord readVersionRecord(std::u16string_view path);

/// The record of a resource that was read. The strings are those of its first translation; when
/// that has no company name but its English (United States) counterpart does, all strings are
/// those of the counterpart.
[[nodiscard]] VersionRecord versionRecord(const platform::VersionResource& resource);

}  // namespace quendal::versioninfo
