#include "core/enumerations.h"

#include <array>

#include "core/guid.h"

namespace quendal {
namespace {

template <class E>
constexpr EnumerationMember member(std::u16string_view name, E value) {
  return {name, static_cast<std::int32_t>(value)};
}

constexpr EnumerationMember kLogLevel[] = {
    {u"LOG_LEVEL_OFF", 1},         {u"LOG_LEVEL_LOW", 2},       {u"LOG_LEVEL_MEDIUM", 3},
    {u"LOG_LEVEL_HIGH", 4},        {u"LOG_LEVEL_INTERNALS", 5}, {u"LOG_LEVEL_KEEP_FILES", 6},
    {u"LOG_LEVEL_PERFORMANCE", 7},
};

constexpr EnumerationMember kLogRepeat[] = {
    {u"LOG_REPEAT_NONE", 1},      {u"LOG_REPEAT_WARNING", 10}, {u"LOG_REPEAT_SERIOUS", 20},
    {u"LOG_REPEAT_CRITICAL", 50}, {u"LOG_REPEAT_FATAL", 100},
};

constexpr EnumerationMember kVersionStrings[] = {
    member(u"viPredefinedFirst", VersionString::Language),
    member(u"viLanguage", VersionString::Language),
    member(u"viComments", VersionString::Comments),
    member(u"viCompanyName", VersionString::CompanyName),
    member(u"viFileDescription", VersionString::FileDescription),
    member(u"viFileVersion", VersionString::FileVersion),
    member(u"viInternalName", VersionString::InternalName),
    member(u"viLegalCopyright", VersionString::LegalCopyright),
    member(u"viLegalTrademarks", VersionString::LegalTrademarks),
    member(u"viOriginalFilename", VersionString::OriginalFilename),
    member(u"viProductName", VersionString::ProductName),
    member(u"viProductVersion", VersionString::ProductVersion),
    member(u"viPrivateBuild", VersionString::PrivateBuild),
    member(u"viSpecialBuild", VersionString::SpecialBuild),
    member(u"viLegalTrademarks1", VersionString::LegalTrademarks1),
    member(u"viLegalTrademarks2", VersionString::LegalTrademarks2),
    member(u"viPredefinedLast", VersionString::LegalTrademarks2)};

constexpr EnumerationMember kQuoteStyle[] = {
    member(u"sbNone", QuoteStyle::None),
    member(u"sbDouble", QuoteStyle::Double),
    member(u"sbSingle", QuoteStyle::Single),
    member(u"sbSquareBrackets", QuoteStyle::SquareBrackets),
    member(u"sbExcelDateString", QuoteStyle::ExcelDateString),
    member(u"sbADODBSheetReference", QuoteStyle::SheetReference)};

}  // namespace

std::span<const EnumerationDescription> enumerations() noexcept {
  static constexpr std::array all = {
      EnumerationDescription{u"LOG_LEVEL", guid("C756574C-52A0-43CD-8EB1-2BCE87B7CA84"), kLogLevel},
      EnumerationDescription{u"LOG_REPEAT", guid("3E444024-458A-49E5-B5A9-38054F66B059"),
                             kLogRepeat},
      EnumerationDescription{u"VersionInfoStrings", guid("1D390424-7C12-4E6A-B44B-FD5C4459CE94"),
                             kVersionStrings},
      EnumerationDescription{u"sbQuoteStyle", guid("ED6E0B86-EBF9-4C28-9797-8E2445D80FF0"),
                             kQuoteStyle},
  };
  return all;
}

}  // namespace quendal
