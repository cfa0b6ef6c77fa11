#include "system/queries.h"

#include <algorithm>
#include <stdexcept>

#include "base/text.h"
#include "core/apartment.h"
#include "core/enumerations.h"
#include "platform/clock.h"
#include "platform/folders.h"
#include "platform/identities.h"
#include "platform/registry.h"
#include "versioninfo/version_record.h"

namespace quendal::system {
namespace {

constexpr std::u16string_view kCurrentVersionKey =
    u"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";
constexpr std::u16string_view kRuntimePolicyKey = u"Software\\Microsoft\\.NETFramework\\policy";
constexpr std::u16string_view kODBCDriversKey = u"Software\\ODBC\\ODBCINST.INI\\ODBC Drivers";

std::u16string registryProductName() {
  try {
    return platform::registryText(kCurrentVersionKey, u"ProductName").value_or(u"");
  } catch (const std::invalid_argument&) {  // a value of no bytes at all
    throw AutomationError(error_number::kInvalidCall);
  }
}

/// x / unit to the nearest whole number, halves to even.
std::int32_t roundedQuotient(std::int32_t x, std::int32_t unit) noexcept {
  std::int32_t whole = x / unit;
  const std::int32_t twice = (x % unit) * 2;
  const bool isOdd = whole % 2 != 0;
  if (twice > unit || (twice == unit && isOdd)) ++whole;
  if (twice < -unit || (twice == -unit && isOdd)) --whole;
  return whole;
}

}  // namespace

std::u16string queryOSName() {
  OSVersionState& state = apartment().osVersion;
  state.productName = registryProductName();
  platform::OSVersion version = platform::osVersion();
  state.major = version.major;
  state.minor = version.minor;
  state.build = version.build;
  state.platformId = version.platformId;
  state.servicePack = std::move(version.servicePack);
  return u"Unknown";
}

Boolean queryIsWow64() { return Boolean{platform::wow64Flag()}; }

std::u16string queryBitText() { return isTrue(queryIsWow64()) ? u"64 Bit" : u"32 Bit"; }

std::int32_t queryTickCount() noexcept { return platform::tickCount(); }

std::u16string upTimeText(std::int32_t ticks) {
  std::int32_t seconds = roundedQuotient(ticks, 1000);
  if (seconds < 60) return decimalText(seconds) + u" Seconds";
  std::int32_t minutes = roundedQuotient(seconds, 60);
  seconds %= 60;
  std::u16string text = u" Minutes " + decimalText(seconds) + u" Seconds";
  if (minutes < 60) return decimalText(minutes) + text;
  std::int32_t hours = roundedQuotient(minutes, 60);
  minutes %= 60;
  text = u" Hours " + decimalText(minutes) + text;
  if (hours < 24) return decimalText(hours) + text;
  const std::int32_t days = roundedQuotient(hours, 24);
  hours %= 24;
  return decimalText(days) + u" Days " + decimalText(hours) + text;
}

std::u16string queryUpTime() { return upTimeText(queryTickCount()); }

std::u16string queryComputerName() { return platform::computerName(); }

std::u16string queryUserName() { return platform::userName(); }

std::int32_t queryProcessId() noexcept { return platform::processId(); }

std::int32_t queryThreadId() noexcept { return platform::threadId(); }

std::u16string querySpecialFolder(int id) {
  std::u16string path = platform::specialFolder(id);
  if (!path.empty() && path.back() != u'\\') path += u'\\';
  return path;
}

std::u16string queryIISVersion() {
  constexpr int kSystemFolder = 37;
  const auto record =
      versioninfo::readVersionRecord(querySpecialFolder(kSystemFolder) + u"inetsrv\\inetinfo.exe");
  return std::u16string(record.value(VersionString::ProductVersion));
}

std::vector<std::u16string> queryDotNetVersions() {
  std::vector<std::u16string> versions;
  for (const std::u16string& key : platform::registryKeys(kRuntimePolicyKey)) {
    if (containsNoCase(key, u"upgrade")) continue;
    const std::u16string path = std::u16string(kRuntimePolicyKey) + u"\\" + key;
    for (const platform::RegistryValue& value : platform::registryValues(path))
      versions.push_back(key.substr(1) + u"." + value.name);
  }
  return versions;
}

std::u16string queryDotNetVersion() {
  std::u16string best;
  for (std::u16string& version : queryDotNetVersions())
    if (version > best) best = std::move(version);
  return best;
}

std::vector<std::u16string> queryODBCDrivers() {
  std::vector<std::u16string> names;
  for (platform::RegistryValue& value : platform::registryValues(kODBCDriversKey)) {
    const auto* text = std::get_if<std::u16string>(&value.data);
    if (text != nullptr && equalNoCase(*text, u"Installed")) names.push_back(std::move(value.name));
  }
  return names;
}

}  // namespace quendal::system
