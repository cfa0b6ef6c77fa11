// The texts that stand for the numbers of the fixed file information record.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quendal::versioninfo {

/// High word, ".", low word: "1.0". A word of 32768 or more counts as negative, here and below.
[[nodiscard]] std::u16string structureVersionText(std::uint32_t version);

/// major.minor.build+revision as "2.03.1204"; without a build (0 or negative) the revision takes
/// four digits: "1.00.0005".
[[nodiscard]] std::u16string versionText(std::uint32_t high, std::uint32_t low);

/// A word and a blank for each flag that is set: "Debug PreRel ".
[[nodiscard]] std::u16string fileFlagsText(std::uint32_t flags);

/// "NT-Win32" and the like; "Unknown" for any other number.
[[nodiscard]] std::u16string_view fileOsText(std::uint32_t operatingSystem);

/// "Application", "DLL" and the like; empty for any other number.
[[nodiscard]] std::u16string_view fileTypeText(std::uint32_t type);

/// Kind of driver ("Unknown" for a number without one) or of font; empty for everything else.
[[nodiscard]] std::u16string_view fileSubtypeText(std::uint32_t type, std::uint32_t subtype);

}  // namespace quendal::versioninfo
