#include "core/enumerations.h"

#include <array>

#include "core/guid.h"

namespace quendal {
namespace {

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
    {u"viPredefinedFirst", 0},   {u"viLanguage", 0},        {u"viComments", 1},
    {u"viCompanyName", 2},       {u"viFileDescription", 3}, {u"viFileVersion", 4},
    {u"viInternalName", 5},      {u"viLegalCopyright", 6},  {u"viLegalTrademarks", 7},
    {u"viOriginalFilename", 8},  {u"viProductName", 9},     {u"viProductVersion", 10},
    {u"viPrivateBuild", 11},     {u"viSpecialBuild", 12},   {u"viLegalTrademarks1", 13},
    {u"viLegalTrademarks2", 14}, {u"viPredefinedLast", 14}};

constexpr EnumerationMember kQuoteStyle[] = {
    {u"sbNone", 0},           {u"sbDouble", 1},          {u"sbSingle", 2},
    {u"sbSquareBrackets", 3}, {u"sbExcelDateString", 4}, {u"sbADODBSheetReference", 5}};

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
