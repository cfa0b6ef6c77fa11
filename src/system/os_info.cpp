#include "system/os_info.h"

#include "core/apartment.h"
#include "core/dictionary.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "platform/identities.h"
#include "platform/locale.h"
#include "system/host_address.h"
#include "system/queries.h"

namespace quendal {
namespace {

constexpr std::uint32_t kShortDate = 0x1F;
constexpr std::uint32_t kMonthNames = 0x38;
constexpr std::uint32_t kAbbreviatedMonthNames = 0x44;
constexpr std::uint32_t kDayNames = 0x2A;
constexpr std::uint32_t kAbbreviatedDayNames = 0x31;

Variant monthNames(std::uint32_t firstItem) {
  constexpr std::int16_t kMonths = 12;
  const Dictionary names = Dictionary::create();
  for (std::int16_t month = 1; month <= kMonths; ++month)
    names.add(month, platform::localeText(firstItem + static_cast<std::uint32_t>(month) - 1));
  return names.object();
}

Variant dayNames(std::uint32_t firstItem) {
  constexpr std::uint32_t kDays = 7;
  constexpr std::int16_t kKey = 1;  // the same for every day: the second one raises
  const Dictionary names = Dictionary::create();
  for (std::uint32_t day = 0; day < kDays; ++day)
    names.add(kKey, platform::localeText(firstItem + day));
  return names.object();
}

}  // namespace

OsInfo::OsInfo() noexcept { clearError(); }

OsInfo::~OsInfo() { clearError(); }

std::u16string OsInfo::localeItem(std::uint32_t item) { return platform::localeText(item); }

Variant OsInfo::dateFormatShort() { return platform::localeText(kShortDate); }

Variant OsInfo::monthNamesShort() { return monthNames(kAbbreviatedMonthNames); }

Variant OsInfo::monthNamesLong() { return monthNames(kMonthNames); }

Variant OsInfo::dayLongNames() { return dayNames(kDayNames); }

Variant OsInfo::dayShortNames() { return dayNames(kAbbreviatedDayNames); }

std::u16string OsInfo::tempDir() {
  std::u16string folder = platform::environmentVariable(u"temp");
  while (!folder.empty() && folder.back() == u'\\') folder.pop_back();
  // That it cannot be created is no concern of the caller.
  if (!folder.empty()) static_cast<void>(platform::createFolder(folder));
  return folder;
}

std::u16string OsInfo::os() { return platform::environmentVariable(u"os"); }

std::u16string OsInfo::userName() { return platform::environmentVariable(u"username"); }

std::u16string OsInfo::systemDrive() { return platform::environmentVariable(u"systemdrive"); }

std::u16string OsInfo::winDir() { return platform::environmentVariable(u"windir"); }

std::u16string OsInfo::systemDir() {
  std::u16string folder = platform::systemFolder();
  if (!folder.empty()) folder += u'\0';
  return folder;
}

std::int32_t OsInfo::tickCount() { return system::queryTickCount(); }

std::u16string OsInfo::upTime() { return system::queryUpTime(); }

std::u16string OsInfo::ipAddress() { return system::queryIPAddress(); }

Boolean OsInfo::bit() { return system::queryIsWow64(); }

std::u16string OsInfo::bitAsString() { return system::queryBitText(); }

std::u16string OsInfo::folder(int id) { return system::querySpecialFolder(id); }

}  // namespace quendal
