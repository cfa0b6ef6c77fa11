#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <iterator>
#include <optional>
#include <set>
#include <utility>

#include "base/text.h"
#include "base/utf8.h"
#include "platform/code_page.h"
#include "platform/posix/host_files.h"
#include "platform/posix/registry_tree.h"
#include "platform/registry_data.h"

namespace quendal::platform {
namespace {

constexpr std::u16string_view kCurrentVersionKey =
    u"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";
constexpr std::u16string_view kDriversKey = u"Software\\ODBC\\ODBCINST.INI\\ODBC Drivers";
constexpr std::u16string_view kRuntimePolicyKey = u"Software\\Microsoft\\.NETFramework\\policy";

StoredValue storedText(std::u16string name, std::u16string_view text) {
  return {std::move(name), registry_type::kText, toCodePage(text) + '\0'};
}

RegistryTree productName() {
  auto release = readTextFile("/etc/os-release");
  if (!release) release = readTextFile("/usr/lib/os-release");
  const auto name = release ? assignedValue(*release, "PRETTY_NAME") : std::nullopt;
  return {{std::u16string(kCurrentVersionKey),
           {storedText(u"ProductName", fromUtf8(name.value_or("Linux")))}}};
}

// Every section is a driver, but for those that configure the driver manager itself.
RegistryTree drivers() {
  const std::string folder = environmentText("ODBCSYSINI");
  const auto file = readTextFile((folder.empty() ? "/etc" : folder) + "/odbcinst.ini");
  if (!file) return {};
  StoredKey key{std::u16string(kDriversKey), {}};
  std::string_view rest = *file;
  while (!rest.empty()) {
    const std::string_view line = trimmed(takeLine(rest));
    const std::size_t end = line.find(']');
    if (!line.starts_with('[') || end == std::string_view::npos) continue;
    const std::string_view section = trimmed(line.substr(1, end - 1));
    if (section.empty() || section == "ODBC" || section == "ODBC Drivers") continue;
    const std::u16string name = fromUtf8(section);
    const auto isSame = [&name](const StoredValue& one) { return equalNoCase(one.name, name); };
    if (std::ranges::none_of(key.values, isSame))
      key.values.push_back(storedText(name, u"Installed"));
  }
  return {std::move(key)};
}

// "8.0.0-preview.1": three numbers, and what follows them.
using RuntimeVersion = std::pair<std::array<unsigned, 3>, std::string>;

std::optional<RuntimeVersion> runtimeVersion(std::string_view folder) {
  RuntimeVersion version;
  const char* at = folder.data();
  const char* const end = at + folder.size();
  for (std::size_t i = 0; i < version.first.size(); ++i) {
    if (i > 0 && (at == end || *at++ != '.')) return std::nullopt;
    const auto [next, error] = std::from_chars(at, end, version.first[i]);
    if (error != std::errc()) return std::nullopt;
    at = next;
  }
  version.second.assign(at, end);
  return version;
}

std::set<RuntimeVersion> runtimeVersions() {
  namespace fs = std::filesystem;
  std::set<RuntimeVersion> versions;
  for (const std::string& root : {environmentText("DOTNET_ROOT"), std::string("/usr/share/dotnet"),
                                  std::string("/usr/lib/dotnet")}) {
    if (root.empty()) continue;
    std::error_code error;
    fs::directory_iterator entries(root + "/shared/Microsoft.NETCore.App", error);
    for (; !error && entries != fs::directory_iterator(); entries.increment(error)) {
      std::error_code unreadable;
      if (!entries->is_directory(unreadable)) continue;
      if (auto version = runtimeVersion(entries->path().filename().string()))
        versions.insert(*std::move(version));
    }
  }
  return versions;
}

RegistryTree runtimes() {
  RegistryTree keys;
  for (const auto& [numbers, suffix] : runtimeVersions()) {
    std::u16string path(kRuntimePolicyKey);
    path.append(u"\\v").append(decimalText(numbers[0])).append(u".");
    path += decimalText(numbers[1]);
    if (keys.empty() || keys.back().path != path) keys.push_back({path, {}});
    const std::u16string build = decimalText(numbers[2]) + fromUtf8(suffix);
    keys.back().values.push_back(storedText(build, build));
  }
  return keys;
}

}  // namespace

RegistryTree systemRegistry(std::u16string_view key) {
  RegistryTree tree;
  const auto add = [&](std::u16string_view part, RegistryTree (*read)()) {
    if (isWithin(part, key) || isWithin(key, part))
      std::ranges::move(read(), std::back_inserter(tree));
  };
  add(kCurrentVersionKey, productName);
  add(kDriversKey, drivers);
  add(kRuntimePolicyKey, runtimes);
  return tree;
}

}  // namespace quendal::platform
