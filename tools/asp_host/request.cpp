#include "request.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "base/text.h"
#include "encoding.h"
#include "platform/locale.h"
#include "site_path.h"

namespace quendal::host {
namespace {

std::u16string wide(std::string_view text) { return decoded(text, kUtf8); }

bool isFormBody(const PageRequest& request) {
  const std::u16string type = wide(request.header("Content-Type"));
  return equalNoCase(type.substr(0, type.find_first_of(u"; ")),
                     u"application/x-www-form-urlencoded");
}

Fields serverVariables(const PageRequest& request, const PagePlace& place) {
  Fields fields;
  const auto set = [&](std::u16string_view name, std::u16string value) {
    add(fields, name, std::move(value));
  };
  std::u16string all;
  Fields headers;
  for (const auto& [name, value] : request.headers) {
    const std::u16string key = u"HTTP_" + platform::upperCase(replaceAll(wide(name), u"-", u"_"));
    all += key + u":" + wide(value) + u"\n";
    add(headers, key, wide(value));
  }
  set(u"ALL_HTTP", all);
  set(u"APPL_PHYSICAL_PATH", place.root + u"\\");
  set(u"CONTENT_LENGTH", decimalText(static_cast<std::int64_t>(request.body.size())));
  set(u"CONTENT_TYPE", wide(request.header("Content-Type")));
  set(u"PATH_INFO", place.virtualPath);
  set(u"PATH_TRANSLATED", place.file());
  set(u"QUERY_STRING", wide(request.query));
  set(u"REMOTE_ADDR", u"127.0.0.1");
  set(u"REQUEST_METHOD", wide(request.method));
  set(u"SCRIPT_NAME", place.virtualPath);
  const std::u16string host = wide(request.header("Host"));
  set(u"SERVER_NAME", host.empty() ? u"localhost" : host.substr(0, host.find(u':')));
  set(u"SERVER_PORT", decimalText(request.port));
  set(u"URL", place.virtualPath);
  fields.insert(fields.end(), headers.begin(), headers.end());
  for (const auto& [name, value] : request.variables) {
    std::erase_if(fields, [&](const Field& field) { return equalNoCase(field.name, name); });
    set(name, value);
  }
  return fields;
}

Variant textOfField(const Field& field) { return field.joined(); }

}  // namespace

std::string PageRequest::header(std::string_view name) const {
  const auto found = std::ranges::find_if(
      headers, [&](const auto& entry) { return equalNoCase(wide(entry.first), wide(name)); });
  return found == headers.end() ? std::string() : found->second;
}

std::u16string PagePlace::physical(std::u16string_view resolved) const {
  std::u16string path = root + std::u16string(resolved);
  std::ranges::replace(path, u'/', u'\\');
  return path;
}

std::u16string PagePlace::map(std::u16string_view path, std::u16string_view fromFile) const {
  std::u16string full(path);
  if (path.empty() || (path[0] != u'/' && path[0] != u'\\'))
    full = std::u16string(fromFile.substr(root.size(), fromFile.rfind(u'\\') - root.size())) +
           u"/" + full;
  const auto resolved = resolvedPath(full);
  if (!resolved)
    raise(error_number::kInvalidCall, u"The path is outside the site: " + std::u16string(path));
  return physical(*resolved);
}

Object makeRequest(const StopFlag& stop, const PageRequest& request, const PagePlace& place,
                   unsigned codePage) {
  const Decode decode = [codePage](std::string_view bytes) { return decoded(bytes, codePage); };
  const auto values = [stop](const Field& field) { return Variant(makeValueList(stop, field)); };
  const auto parsed = [&](std::string_view raw, char separator, auto item) {
    return makeCollection(stop, {parseFields(raw, separator, decode), wide(raw), item});
  };
  const std::pair<std::u16string_view, Object> collections[] = {
      {u"QueryString", parsed(request.query, '&', values)},
      {u"Form", parsed(isFormBody(request) ? request.body : std::string(), '&', values)},
      {u"Cookies", parsed(request.header("Cookie"), ';', &textOfField)},
      {u"ServerVariables",
       makeCollection(stop, {serverVariables(request, place), {}, &textOfField})}};
  HostObject object = pageObject(stop);
  std::vector<Object> inOrder;
  for (const auto& [name, collection] : collections) {
    addCollection(object, name, collection);
    inOrder.push_back(collection);
  }
  return object
      .defaultMember(
          [inOrder](Arguments arguments) -> Variant {
            for (const Object& each : inOrder) {
              Variant found = each.get(u"Item", textOf(arguments[0]));
              if (found.vt != VT_EMPTY) return found;
            }
            return {};
          },
          {}, {1, 1})
      .defaultName(u"Item")
      .object();
}

}  // namespace quendal::host
