// Special folders from the user-directories configuration and the usual places of a system.
#include "platform/folders.h"

#include <sys/stat.h>

#include <algorithm>
#include <iterator>
#include <string_view>

#include "base/utf8.h"
#include "platform/posix/host_files.h"

namespace quendal::platform {
namespace {

constexpr int kSystemFolderId = 37;

// Where a folder's path begins.
enum class Base { Root, Home, Config, Data, Cache, UserDirectory };

struct Rule {
  int id;
  Base base;
  std::string_view path;           // below the base, with its first separator
  std::string_view variable = {};  // in the user-directories configuration; `path` without it
};

// Folders that have no like here (favourites, send-to, cookies, ...) are absent.
constexpr Rule kRules[] = {
    {0, Base::UserDirectory, "/Desktop", "XDG_DESKTOP_DIR"},
    {2, Base::Data, "/applications"},
    {5, Base::UserDirectory, "/Documents", "XDG_DOCUMENTS_DIR"},
    {7, Base::Config, "/autostart"},
    {11, Base::Data, "/applications"},
    {13, Base::UserDirectory, "/Music", "XDG_MUSIC_DIR"},
    {14, Base::UserDirectory, "/Videos", "XDG_VIDEOS_DIR"},
    {16, Base::UserDirectory, "/Desktop", "XDG_DESKTOP_DIR"},
    {20, Base::Root, "/usr/share/fonts"},
    {21, Base::UserDirectory, "/Templates", "XDG_TEMPLATES_DIR"},
    {22, Base::Root, "/usr/share/applications"},
    {23, Base::Root, "/usr/share/applications"},
    {24, Base::Root, "/etc/xdg/autostart"},
    {26, Base::Config, ""},
    {28, Base::Data, ""},
    {32, Base::Cache, ""},
    {35, Base::Root, "/var/lib"},
    {36, Base::Root, "/usr"},
    {kSystemFolderId, Base::Root, "/usr/lib"},
    {38, Base::Root, "/opt"},
    {39, Base::UserDirectory, "/Pictures", "XDG_PICTURES_DIR"},
    {40, Base::Home, ""},
    {43, Base::Root, "/usr/share"},
};

// A base folder that the environment may move; only an absolute path counts.
std::string movable(const char* variable, std::string_view usual) {
  std::string path = environmentText(variable);
  if (path.starts_with('/')) return path;
  path = homeFolder();
  return path.empty() ? path : path.append(usual);
}

std::string configFolder() { return movable("XDG_CONFIG_HOME", "/.config"); }

// A directory set to the home folder itself is one that the user switched off.
std::string userDirectory(const Rule& rule) {
  constexpr std::string_view kHome = "$HOME";
  const std::string home = homeFolder();
  const auto file = readTextFile(configFolder() + "/user-dirs.dirs");
  const auto set = file ? assignedValue(*file, rule.variable) : std::nullopt;
  if (!set) return home.empty() ? home : home + std::string(rule.path);
  std::string path = *set;
  if (path == kHome || path.starts_with("$HOME/")) path.replace(0, kHome.size(), home);
  while (path.size() > 1 && path.ends_with('/')) path.pop_back();
  return path == home ? std::string() : path;
}

std::string pathOf(const Rule& rule) {
  const auto below = [&rule](std::string base) {
    return base.empty() ? base : base.append(rule.path);
  };
  switch (rule.base) {
    case Base::Root:
      return std::string(rule.path);
    case Base::Home:
      return homeFolder();
    case Base::Config:
      return below(configFolder());
    case Base::Data:
      return below(movable("XDG_DATA_HOME", "/.local/share"));
    case Base::Cache:
      return below(movable("XDG_CACHE_HOME", "/.cache"));
    case Base::UserDirectory:
      return userDirectory(rule);
  }
  return {};
}

bool isFolder(const std::string& path) {
  struct stat status {};
  return path.starts_with('/') && stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace

std::u16string specialFolder(int id) {
  const auto* const rule = std::find_if(std::begin(kRules), std::end(kRules),
                                        [id](const Rule& each) { return each.id == id; });
  if (rule == std::end(kRules)) return {};
  const std::string path = pathOf(*rule);
  return isFolder(path) ? fromUtf8(path) : std::u16string();
}

std::u16string systemFolder() { return specialFolder(kSystemFolderId); }

}  // namespace quendal::platform
