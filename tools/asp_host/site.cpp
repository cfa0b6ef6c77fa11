#include "site.h"

#include <algorithm>
#include <array>
#include <boost/beast/http/status.hpp>

#include "base/text.h"
#include "encoding.h"
#include "platform/files.h"
#include "site_path.h"

namespace quendal::host {
namespace {

constexpr std::array<std::u16string_view, 4> kDefaultDocuments = {u"/default.asp", u"/index.asp",
                                                                  u"/default.htm", u"/index.html"};
/// Source texts of pages, which are no documents of their own.
constexpr std::array<std::u16string_view, 2> kHidden = {u".inc", u".asa"};

struct FileType {
  std::u16string_view ending;
  std::string_view type;
};
constexpr FileType kTypes[] = {
    {u".html", "text/html; charset=utf-8"},
    {u".htm", "text/html; charset=utf-8"},
    {u".css", "text/css; charset=utf-8"},
    {u".js", "text/javascript; charset=utf-8"},
    {u".txt", "text/plain"},
    {u".svg", "image/svg+xml"},
    {u".png", "image/png"},
};

bool endsWith(std::u16string_view path, std::u16string_view ending) {
  return path.size() >= ending.size() &&
         equalNoCase(path.substr(path.size() - ending.size()), ending);
}

}  // namespace

Target findTarget(const std::u16string& root, std::string_view target, bool showLogs) {
  Target found;
  const std::string_view rawPath = target.substr(0, target.find('?'));
  if (rawPath.size() < target.size()) found.query = target.substr(rawPath.size() + 1);
  const auto bytes = percentDecoded(rawPath, false);
  found.kind = Target::Kind::Malformed;
  if (!bytes || !bytes->starts_with('/')) return found;
  const std::u16string path = decoded(*bytes, kUtf8);
  if (encoded(path, kUtf8) != *bytes) return found;
  found.kind = Target::Kind::Missing;
  const auto resolved = resolvedPath(path);
  if (!resolved || path.find(u'\\') != path.npos) return found;
  if (!showLogs && leadsThroughLogs(*resolved)) return found;

  found.place = {root, *resolved};
  if (platform::lookAt(found.place.file()).isFolder) {
    found.kind = Target::Kind::Folder;
    if (!path.ends_with(u'/')) return found;
    const auto document = std::ranges::find_if(kDefaultDocuments, [&](auto name) {
      return platform::fileExists(found.place.physical(*resolved + std::u16string(name)));
    });
    found.kind = Target::Kind::Missing;
    if (document == kDefaultDocuments.end()) return found;
    found.place.virtualPath += *document;
  } else if (path.ends_with(u'/')) {
    return found;
  }
  const std::u16string& name = found.place.virtualPath;
  const auto is = [&](std::u16string_view ending) { return endsWith(name, ending); };
  if (!platform::fileExists(found.place.file()) || std::ranges::any_of(kHidden, is)) return found;
  found.kind = is(u".asp") ? Target::Kind::Page : Target::Kind::File;
  return found;
}

PageResponse fileResponse(const std::u16string& file) {
  std::vector<std::byte> bytes;
  if (platform::readFile(file, bytes) != platform::FileError::None)
    return errorResponse(500, "The file cannot be read.");
  const auto* type = std::ranges::find_if(
      kTypes, [&](const FileType& entry) { return endsWith(file, entry.ending); });
  PageResponse response;
  response.headers = {
      {"Content-Type",
       std::string(type == std::end(kTypes) ? "application/octet-stream" : type->type)},
      {"Cache-Control", "no-cache"}};
  response.body.assign(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  return response;
}

PageResponse errorResponse(int status, std::string_view detail) {
  namespace http = boost::beast::http;
  PageResponse response;
  response.status = status;
  response.reason =
      std::string(http::obsolete_reason(http::int_to_status(static_cast<unsigned>(status))));
  response.headers = {{"Content-Type", "text/html; charset=utf-8"}};
  const std::string title = std::to_string(status) + " " + response.reason;
  response.body = "<!DOCTYPE html><title>" + title + "</title><h1>" + title + "</h1><pre>" +
                  encoded(htmlEncoded(decoded(detail, kUtf8)), kUtf8) + "</pre>\n";
  return response;
}

}  // namespace quendal::host
