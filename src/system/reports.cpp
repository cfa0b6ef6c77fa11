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

}  // namespace

void reportPlatform(ReportWriter& report) {
  clearError();
  std::vector<PlatformFact> facts;
  ignoringErrors([&] { facts = platformFacts(); });
  ignoringErrors([&] { report.entry(u"Platform Information"); });
  for (const PlatformFact& fact : facts)
    ignoringErrors([&] { report.parameter(fact.label, fact.value); });
}

void reportODBCDrivers(ReportWriter& report) {
  clearError();
  std::vector<std::u16string> names;
  ignoringErrors([&] { names = queryODBCDrivers(); });
  ignoringErrors([&] { report.entry(u"ODBC Drivers"); });
  for (const std::u16string& name : names) ignoringErrors([&] { report.entry(u"\t" + name); });
}

void reportSpecialFolders(ReportWriter& report, const Object& osInfo) {
  clearError();
  ignoringErrors([&] { report.entry(u"LogOSInfo: List Special Folders"); });
  for (const FolderRow& row : kFolderRows)
    ignoringErrors([&] { report.parameter(row.label, osInfo.get(row.property)); });
}

std::int32_t reportFileVersions(ReportWriter& report, std::u16string_view directory) {
  report.entry(u"LogFileVersionInfo");
  report.parameter(u"IN_szDirectory", directory);
  const Dictionary versions = Dictionary::create();
  VersionInfo versionInfo;
  const Text folder(directory);
  const std::int32_t status = versionInfo.listFileVersions(TextRef(&folder), versions.object());
  if (status != 0) return status;
  forEach(versions.keys(), [&](const Variant& file) {
    report.parameter(file, versions.item(file));
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
