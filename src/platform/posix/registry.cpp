#include "platform/registry.h"

#include "platform/posix/host_files.h"
#include "platform/posix/registry_file.h"
#include "platform/posix/registry_query.h"
#include "platform/posix/registry_sources.h"
#include "platform/registry_data.h"

namespace quendal::platform {
namespace {

// Asked anew each time, so what is installed meanwhile shows. A file that is named but cannot be
// read is an empty registry.
RegistryQuery lookUp(std::u16string_view key) {
  RegistryQuery query(key);
  const std::string file = environmentText("QUENDAL_REGISTRY");
  if (file.empty()) {
    tellSystemFacts(query);
  } else if (const auto bytes = readTextFile(file)) {
    readRegistryFile(*bytes, query);
  }
  return query;
}

}  // namespace

std::optional<std::u16string> registryText(std::u16string_view key, std::u16string_view name) {
  const RegistryQuery query = lookUp(key);
  if (!query.exists()) return std::nullopt;
  const StoredValue* const value = query.value(name);
  return value != nullptr ? registryTextOf(value->bytes) : std::u16string(kRegistryError);
}

std::vector<RegistryValue> registryValues(std::u16string_view key) {
  std::vector<RegistryValue> values;
  const RegistryQuery query = lookUp(key);
  values.reserve(query.values().size());
  for (const StoredValue& value : query.values()) {
    values.push_back({value.name, registryData(value.type, value.bytes)});
  }
  return values;
}

std::vector<std::u16string> registryKeys(std::u16string_view key) { return lookUp(key).keys(); }

}  // namespace quendal::platform
