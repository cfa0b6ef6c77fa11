#include "platform/posix/registry_sources.h"

#include <charconv>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>

#include "base/utf8.h"
#include "platform/posix/host_files.h"
#include "platform/posix/registry_query.h"

namespace quendal::platform {
namespace {

constexpr std::u16string_view kCurrentVersionKey =
    u"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";
constexpr std::u16string_view kDriversKey = u"Software\\ODBC\\ODBCINST.INI\\ODBC Drivers";
constexpr std::u16string_view kRuntimePolicyKey = u"Software\\Microsoft\\.NETFramework\\policy";

void tellProductName(RegistryQuery& query) {
  auto release = readTextFile("/etc/os-release");
  if (!release) release = readTextFile("/usr/lib/os-release");
  query.tellKey(kCurrentVersionKey);
  const auto name = release ? assignedValue(*release, "PRETTY_NAME") : std::nullopt;
  query.tellValue(storedText(u"ProductName", fromUtf8(name.value_or("Linux"))));
}

// Every section is a driver, but for those that configure the driver manager itself.
void tellDrivers(RegistryQuery& query) {
  const std::string folder = environmentText("ODBCSYSINI");
  const auto file = readTextFile((folder.empty() ? "/etc" : folder) + "/odbcinst.ini");
  if (!file) return;
  query.tellKey(kDriversKey);
  std::string_view rest = *file;
  while (!rest.empty()) {
    std::string_view line = trimmed(takeLine(rest));
    const std::size_t end = line.find(']');
    if (!line.starts_with('[') || end == std::string_view::npos) continue;
    const std::string_view section = trimmed(line.substr(1, end - 1));
    if (section.empty() || section == "ODBC" || section == "ODBC Drivers") continue;
    query.tellValue(storedText(fromUtf8(section), u"Installed"));
  }
}

// A runtime's version; ordered by its numbers, then by what follows them ("-preview.1").
struct RuntimeVersion {
  unsigned major = 0;
  unsigned minor = 0;
  unsigned patch = 0;
  std::string suffix;
  bool operator<(const RuntimeVersion& other) const {
    return std::tie(major, minor, patch, suffix) <
           std::tie(other.major, other.minor, other.patch, other.suffix);
  }
};

std::optional<RuntimeVersion> runtimeVersion(std::string_view folder) {
  RuntimeVersion version;
  const char* at = folder.data();
  const char* const end = at + folder.size();
  for (unsigned* part : {&version.major, &version.minor, &version.patch}) {
    if (part != &version.major && (at == end || *at++ != '.')) return std::nullopt;
    const auto [next, error] = std::from_chars(at, end, *part);
    if (error != std::errc()) return std::nullopt;
    at = next;
  }
  version.suffix.assign(at, end);
  return version;
}

void tellRuntimes(RegistryQuery& query) {
  std::set<RuntimeVersion> versions;
  for (const std::string& root : {environmentText("DOTNET_ROOT"), std::string("/usr/share/dotnet"),
                                  std::string("/usr/lib/dotnet")}) {
    if (root.empty()) continue;
    std::error_code error;
    std::filesystem::directory_iterator entries(root + "/shared/Microsoft.NETCore.App", error);
    for (; !error && entries != std::filesystem::directory_iterator(); entries.increment(error)) {
      std::error_code unreadable;
      if (!entries->is_directory(unreadable)) continue;
      if (const auto version = runtimeVersion(entries->path().filename().string())) {
        versions.insert(*version);
      }
    }
  }
  for (const RuntimeVersion& version : versions) {
    const std::string key =
        "\\v" + std::to_string(version.major) + "." + std::to_string(version.minor);
    const std::u16string build = fromUtf8(std::to_string(version.patch) + version.suffix);
    query.tellKey(std::u16string(kRuntimePolicyKey) + fromUtf8(key));
    query.tellValue(storedText(build, build));
  }
}

}  // namespace

void tellSystemFacts(RegistryQuery& query) {
  if (query.wants(kCurrentVersionKey)) tellProductName(query);
  if (query.wants(kDriversKey)) tellDrivers(query);
  if (query.wants(kRuntimePolicyKey)) tellRuntimes(query);
}

}  // namespace quendal::platform
