// The enumerations of the type library. Values are part of the interface.
#pragma once

#include <quendal/automation.h>

#include <cstdint>
#include <span>
#include <string_view>

namespace quendal {

/// The values of LOG_LEVEL and LOG_REPEAT that the library itself uses.
inline constexpr std::int16_t kLogLevelLow = 2;
inline constexpr std::int16_t kLogRepeatSerious = 20;

enum class VersionString : std::int32_t {
  Language = 0,
  Comments = 1,
  CompanyName = 2,
  FileDescription = 3,
  FileVersion = 4,
  InternalName = 5,
  LegalCopyright = 6,
  LegalTrademarks = 7,
  OriginalFilename = 8,
  ProductName = 9,
  ProductVersion = 10,
  PrivateBuild = 11,
  SpecialBuild = 12,
  LegalTrademarks1 = 13,
  LegalTrademarks2 = 14,
};
constexpr std::u16string_view interfaceNameOf(VersionString) { return u"VersionInfoStrings"; }

enum class QuoteStyle : std::int32_t {
  None = 0,
  Double = 1,
  Single = 2,
  SquareBrackets = 3,
  ExcelDateString = 4,
  SheetReference = 5,
};
constexpr std::u16string_view interfaceNameOf(QuoteStyle) { return u"sbQuoteStyle"; }

/// An enumeration as the type library shows it.
struct EnumerationMember {
  std::u16string_view name;
  std::int32_t value;
};
struct EnumerationDescription {
  std::u16string_view name;
  GUID id;
  std::span<const EnumerationMember> members;
};
/// All enumerations of the type library.
[[nodiscard]] std::span<const EnumerationDescription> enumerations() noexcept;

}  // namespace quendal
