#include "versioninfo/version_record.h"

#include <cstdint>

#include "base/text.h"
#include "platform/version_resource.h"
#include "versioninfo/version_text.h"

namespace quendal::versioninfo {
namespace {

// The keys in the string table are the same without the blanks; the language has none.
constexpr std::array<std::u16string_view, kVersionStringCount> kNames = {
    u"Language",          u"Comments",         u"Company Name",    u"File Description",
    u"File Version",      u"Internal Name",    u"Legal Copyright", u"Legal Trademarks",
    u"Original Filename", u"Product Name",     u"Product Version", u"Private Build",
    u"Special Build",     u"LegalTrademarks1", u"LegalTrademarks2"};

void setFixedTexts(VersionRecord& record, const platform::FixedFileInfo& info) {
  record.verStructure = structureVersionText(info.structureVersion);
  record.verFile = versionText(info.fileVersionHigh, info.fileVersionLow);
  record.verProduct = versionText(info.productVersionHigh, info.productVersionLow);
  record.fileFlags = fileFlagsText(info.flags);
  record.fileOs = fileOsText(info.operatingSystem);
  record.fileType = fileTypeText(info.type);
  record.fileSubtype = fileSubtypeText(info.type, info.subtype);
}

// The table whose strings are told.
platform::Translation chooseTable(const platform::VersionResource& resource,
                                  platform::Translation first) {
  constexpr std::uint16_t kEnglishUnitedStates = 0x0409;
  constexpr std::u16string_view kCompanyName = u"CompanyName";
  const platform::Translation english{.language = kEnglishUnitedStates, .codePage = first.codePage};
  if (!resource.string(first, kCompanyName).empty()) return first;
  return resource.string(english, kCompanyName).empty() ? first : english;
}

}  // namespace

std::u16string_view predefinedName(VersionString which) noexcept {
  const auto index = static_cast<std::size_t>(which);
  return index < kNames.size() ? kNames[index] : std::u16string_view();
}

std::u16string_view VersionRecord::value(VersionString which) const noexcept {
  const auto index = static_cast<std::size_t>(which);
  return index < values.size() ? values[index] : std::u16string_view();
}

VersionRecord readVersionRecord(std::u16string_view path) {
  const auto resource = platform::readVersionResource(path);
  return resource ? versionRecord(*resource) : VersionRecord();
}

VersionRecord versionRecord(const platform::VersionResource& resource) {
  VersionRecord record;
  record.available = true;
  if (const auto info = resource.fixedInfo()) setFixedTexts(record, *info);
  const auto first = resource.firstTranslation();
  if (!first) return record;

  record.values[0] = platform::languageName(first->language);
  const auto table = chooseTable(resource, *first);
  for (std::size_t i = 1; i < record.values.size(); ++i)
    record.values[i] = resource.string(table, replaceAll(kNames[i], u" ", u""));
  return record;
}

}  // namespace quendal::versioninfo
