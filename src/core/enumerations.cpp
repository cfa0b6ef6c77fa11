#include "core/enumerations.h"

#include <array>

#include "core/guid.h"

namespace quendal {
namespace {

template <class E>
constexpr std::int32_t valueOf(E value) {
  return static_cast<std::int32_t>(value);
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
    {u"viPredefinedFirst", valueOf(VersionString::Language)},
    {u"viLanguage", valueOf(VersionString::Language)},
    {u"viComments", valueOf(VersionString::Comments)},
    {u"viCompanyName", valueOf(VersionString::CompanyName)},
    {u"viFileDescription", valueOf(VersionString::FileDescription)},
    {u"viFileVersion", valueOf(VersionString::FileVersion)},
    {u"viInternalName", valueOf(VersionString::InternalName)},
    {u"viLegalCopyright", valueOf(VersionString::LegalCopyright)},
    {u"viLegalTrademarks", valueOf(VersionString::LegalTrademarks)},
    {u"viOriginalFilename", valueOf(VersionString::OriginalFilename)},
    {u"viProductName", valueOf(VersionString::ProductName)},
    {u"viProductVersion", valueOf(VersionString::ProductVersion)},
    {u"viPrivateBuild", valueOf(VersionString::PrivateBuild)},
    {u"viSpecialBuild", valueOf(VersionString::SpecialBuild)},
    {u"viLegalTrademarks1", valueOf(VersionString::LegalTrademarks1)},
    {u"viLegalTrademarks2", valueOf(VersionString::LegalTrademarks2)},
    {u"viPredefinedLast", valueOf(VersionString::LegalTrademarks2)}};

constexpr EnumerationMember kQuoteStyle[] = {
    {u"sbNone", valueOf(QuoteStyle::None)},
    {u"sbDouble", valueOf(QuoteStyle::Double)},
    {u"sbSingle", valueOf(QuoteStyle::Single)},
    {u"sbSquareBrackets", valueOf(QuoteStyle::SquareBrackets)},
    {u"sbExcelDateString", valueOf(QuoteStyle::ExcelDateString)},
    {u"sbADODBSheetReference", valueOf(QuoteStyle::SheetReference)}};

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
