#include "system/reports.h"

#include "core/apartment.h"
#include "core/dictionary.h"
#include "platform/messages.h"
#include "platform/module.h"
#include "system/platform_block.h"
#include "system/queries.h"
#include "versioninfo/version_info.h"

namespace quendal::system {
namespace {

constexpr std::u16string_view kLineEnd = u"\r\n";

/// The label of a folder and the property of `ClsOSInfo` that tells where it is.
struct FolderRow {
  std::u16string_view label;
  std::u16string_view property;
};

constexpr FolderRow kFolderRows[] = {
    {u"My Documents", u"MyDocumentsFolder"},
    {u"My Pictures", u"MyPicturesFolder"},
    {u"My Music", u"MyMusicFolder"},
    {u"My Videos", u"MyVideosFolder"},
    {u"Common Documents", u"CommonDocumentsFolder"},
    {u"Common Pictures", u"CommonPicturesFolder"},
    {u"Common Music", u"CommonMusicFolder"},
    {u"Common Videos", u"CommonVideosFolder"},
    {u"Start Menu", u"StartMenuFolder"},
    {u"Programs", u"StartMenuProgramsFolder"},
    {u"Startup", u"StartupFolder"},
    {u"Common Start Menu", u"CommonStartMenuFolder"},
    {u"Common Programs", u"CommonStartMenuProgramsFolder"},
    {u"Common Startup", u"CommonStartupFolder"},
    {u"Desktop", u"DesktopFolder"},
    {u"Favourites", u"MyFavoritesFolder"},
    {u"Recent Documents", u"RecentDocumentsFolder"},
    {u"Send To...", u"SendToFolder"},
    {u"Templates", u"TemplatesFolder"},
    {u"Common Desktop", u"CommonDesktopFolder"},
    {u"Common Favourites", u"CommonFavoritesFolder"},
    {u"Common Templates", u"CommonTemplatesFolder"},
    {u"Application Data", u"ApplicationDataFolder"},
    {u"Local Application Data", u"LocalApplicationDataFolder"},
    {u"Common Application Data", u"CommonApplicationDataFolder"},
    {u"Temporary Internet Files", u"TemporaryInternetFilesFolder"},
    {u"Ie Cookies", u"IECookiesFolder"},
    {u"Ie History", u"IEHistoryFolder"},
    {u"Windows Directory", u"WindowsDirectory"},
    {u"System Directory", u"SystemDirectory"},
    {u"Fonts", u"FontsFolder"},
    {u"Program Files", u"ProgramFilesFolder"},
    {u"Common Files", u"CommonFilesFolder"},
    {u"User Profile", u"UserProfileFolder"},
    {u"Admin Tools", u"AdministrativeToolsFolder"},
    {u"Common Admin Tools", u"CommonAdministrativeToolsFolder"},
};

/// Appends an entry that was written, and a line end.
void addLine(std::u16string& text, std::u16string_view entry) {
  if (!entry.empty()) text.append(entry).append(kLineEnd);
}

}  // namespace

void reportPlatform(EntryWriter& log, std::u16string& text) {
  clearError();
  std::vector<PlatformFact> facts;
  ignoringErrors([&] { facts = platformFacts(); });
  ignoringErrors([&] { text += log.writeEntry(u"Platform Information"); });
  for (const PlatformFact& fact : facts)
    ignoringErrors(
        [&] { text += log.writeParameter(fact.label, fact.value, EntryWriter::kReportIndent); });
}

void reportODBCDrivers(EntryWriter& log, std::u16string& text) {
  clearError();
  std::vector<std::u16string> names;
  ignoringErrors([&] { names = queryODBCDrivers(); });
  ignoringErrors([&] { text += log.writeEntry(u"ODBC Drivers"); });
  for (const std::u16string& name : names)
    ignoringErrors([&] { text += log.writeEntry(u"\t" + name); });
}

void reportSpecialFolders(EntryWriter& log, const Object& osInfo, std::u16string& text) {
  clearError();
  // A line end follows also an entry that was filtered out; deliberate.
  ignoringErrors(
      [&] { text.append(log.writeEntry(u"LogOSInfo: List Special Folders")).append(kLineEnd); });
  for (const FolderRow& row : kFolderRows)
    ignoringErrors([&] {
      const Variant folder = osInfo.get(row.property);
      text.append(log.writeParameter(row.label, folder, EntryWriter::kReportIndent))
          .append(kLineEnd);
    });
}

std::int32_t reportFileVersions(EntryWriter& log, std::u16string_view directory,
                                std::u16string& text) {
  addLine(text, log.writeEntry(u"LogFileVersionInfo"));
  addLine(text, log.writeParameter(u"IN_szDirectory", directory, EntryWriter::kReportIndent));
  const Dictionary versions = Dictionary::create();
  VersionInfo versionInfo;
  const std::int32_t status = versionInfo.listFileVersions(TextRef{directory}, versions.object());
  if (status != 0) return status;
  forEach(versions.keys(), [&](const Variant& file) {
    addLine(text, log.writeParameter(file, versions.item(file), EntryWriter::kReportIndent));
    platform::pumpMessages();
  });
  return status;
}

std::u16string ownFolder() {
  const std::u16string path = platform::ownModulePath();
  const std::size_t end = path.find_last_of(u"\\/");
  return end == std::u16string::npos ? std::u16string() : path.substr(0, end);
}

}  // namespace quendal::system
