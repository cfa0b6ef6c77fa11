#include "system/queries.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "base/text.h"
#include "core/apartment.h"
#include "core/enumerations.h"
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

/// To the nearest whole number, halves to even.
std::int32_t roundedQuotient(std::int32_t number, std::int32_t unit) {
  return int32Of(Variant(static_cast<double>(number) / unit));
}

}  // namespace

void recordOSVersion() {
  OSVersionState& state = apartment().osVersion;
  state.productName = registryProductName();
  platform::OSVersion version = platform::osVersion();
  state.major = version.major;
  state.minor = version.minor;
  state.build = version.build;
  state.platformId = version.platformId;
  state.servicePack = std::move(version.servicePack);
}

std::u16string queryBitText() {
  return isTrue(Boolean{platform::wow64Flag()}) ? u"64 Bit" : u"32 Bit";
}

std::u16string upTimeText(std::int32_t ticks) {
  constexpr std::pair<std::int32_t, std::u16string_view> kUnits[] = {
      {60, u" Minutes "}, {60, u" Hours "}, {24, u" Days "}};
  std::int32_t count = roundedQuotient(ticks, 1000);
  std::u16string rest = u" Seconds";
  for (const auto& [size, name] : kUnits) {
    if (count < size) break;
    rest = std::u16string(name) + decimalText(count % size) + rest;
    count = roundedQuotient(count, size);
  }
  return decimalText(count) + rest;
}

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

std::u16string queryDotNetVersion() {
  std::u16string greatest;
  for (const std::u16string& key : platform::registryKeys(kRuntimePolicyKey)) {
    if (containsNoCase(key, u"upgrade")) continue;
    const std::u16string path = std::u16string(kRuntimePolicyKey) + u"\\" + key;
    for (const platform::RegistryValue& value : platform::registryValues(path))
      greatest = std::max(greatest, key.substr(1) + u"." + value.name);
  }
  return greatest;
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
