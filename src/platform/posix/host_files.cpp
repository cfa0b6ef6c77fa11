#include "platform/posix/host_files.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdlib>
#include <vector>

#include "base/utf8.h"
#include "platform/files.h"

namespace quendal::platform {

std::optional<std::string> readTextFile(const std::string& path) {
  std::vector<std::byte> bytes;
  if (readFile(fromUtf8(path), bytes) != FileError::None) return std::nullopt;
  return std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size());
}

std::string environmentText(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : "";
}

std::string homeFolder() {
  std::string home = environmentText("HOME");
  if (!home.starts_with('/')) {  // a server's account often has no environment
    home.clear();
    std::array<char, 4096> buffer;
    passwd record{};
    passwd* found = nullptr;
    if (getpwuid_r(geteuid(), &record, buffer.data(), buffer.size(), &found) == 0 &&
        found != nullptr && found->pw_dir != nullptr) {
      home = found->pw_dir;
    }
  }
  while (home.size() > 1 && home.ends_with('/')) home.pop_back();
  return home;
}

std::string_view takeLine(std::string_view& text) {
  const std::size_t end = text.find('\n');
  std::string_view line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::optional<std::string> assignedValue(std::string_view file, std::string_view name) {
  std::optional<std::string> value;
  while (!file.empty()) {
    std::string_view line = trimmed(takeLine(file));
    if (!line.starts_with(name) || !line.substr(name.size()).starts_with('=')) continue;
    line.remove_prefix(name.size() + 1);
    value.emplace();
    char quote = '\0';
    for (std::size_t i = 0; i < line.size(); ++i) {
      const char c = line[i];
      if (c == quote) {
        quote = '\0';
      } else if (quote == '\0' && (c == '"' || c == '\'')) {
        quote = c;
      } else if (c == '\\' && quote != '\'' && i + 1 < line.size()) {
        *value += line[++i];
      } else if (quote == '\0' && (c == ' ' || c == '\t' || c == '#')) {
        break;
      } else {
        *value += c;
      }
    }
  }
  return value;
}

}  // namespace quendal::platform
