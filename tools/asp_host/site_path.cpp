#include "site_path.h"

#include <algorithm>
#include <array>
#include <vector>

#include "base/text.h"
#include "platform/locale.h"

namespace quendal::host {
namespace {

bool isDevice(std::u16string_view name) {
  static constexpr std::array<std::u16string_view, 6> kDevices = {u"CON", u"PRN",    u"AUX",
                                                                  u"NUL", u"CONIN$", u"CONOUT$"};
  const std::u16string_view stem = trimBlanks(name.substr(0, name.find(u'.')));
  if (std::ranges::any_of(kDevices, [&](auto device) { return equalNoCase(stem, device); }))
    return true;
  return stem.size() == 4 &&
         (equalNoCase(stem.substr(0, 3), u"COM") || equalNoCase(stem.substr(0, 3), u"LPT"));
}

/// False for a name that the file system does not take as it is.
bool isPlainName(std::u16string_view name) {
  return name.find_first_of(u":*?\"<>|") == std::u16string_view::npos &&
         std::ranges::none_of(name, [](char16_t c) { return c < u' '; }) && name.back() != u'.' &&
         name.back() != u' ' && !isDevice(name);
}

}  // namespace

std::optional<std::u16string> resolvedPath(std::u16string_view path) {
  std::vector<std::u16string_view> parts;
  while (!path.empty()) {
    const std::size_t end = std::min(path.find_first_of(u"/\\"), path.size());
    const std::u16string_view part = path.substr(0, end);
    path.remove_prefix(std::min(end + 1, path.size()));
    if (part.empty() || part == u".") continue;
    if (part == u"..") {
      if (parts.empty()) return std::nullopt;
      parts.pop_back();
    } else if (!isPlainName(part)) {
      return std::nullopt;
    } else {
      parts.push_back(part);
    }
  }
  std::u16string result;
  for (const std::u16string_view part : parts) result.append(u"/").append(part);
  return result;
}

bool leadsThroughLogs(std::u16string_view resolved) {
  return (platform::upperCase(resolved) + u'/').find(u"/LOGS/") != std::u16string::npos;
}

std::optional<std::string> percentDecoded(std::string_view text, bool isForm) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const int high = text[i] == '%' && i + 2 < text.size() ? hexValue(text[i + 1]) : -1;
    const int low = high >= 0 ? hexValue(text[i + 2]) : -1;
    if (low >= 0) {
      result += static_cast<char>(high * 16 + low);
      i += 2;
    } else if (text[i] == '%' && !isForm) {
      return std::nullopt;
    } else {
      result += text[i] == '+' && isForm ? ' ' : text[i];
    }
  }
  return result;
}

}  // namespace quendal::host
