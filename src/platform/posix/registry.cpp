#include "platform/registry.h"

#include <algorithm>
#include <atomic>
#include <utility>

#include "base/text.h"
#include "platform/posix/registry_tree.h"
#include "platform/registry_data.h"

namespace quendal::platform {
namespace {

std::atomic<const RegistryTree*> givenTree = nullptr;

RegistryTree treeAround(std::u16string_view key) {
  const RegistryTree* const given = givenTree;
  return given != nullptr ? *given : systemRegistry(key);
}

// Nothing when there is no such key.
std::optional<std::vector<StoredValue>> valuesOf(std::u16string_view key) {
  std::optional<std::vector<StoredValue>> values;
  if (key.empty()) values.emplace();
  for (StoredKey& each : treeAround(key)) {
    if (!isWithin(each.path, key)) continue;
    if (!values) values.emplace();
    if (each.path.size() == key.size()) values = std::move(each.values);
  }
  return values;
}

}  // namespace

bool isWithin(std::u16string_view path, std::u16string_view key) noexcept {
  return key.empty() || (equalNoCase(path.substr(0, key.size()), key) &&
                         (path.size() == key.size() || path[key.size()] == u'\\'));
}

void answerFrom(const RegistryTree* tree) noexcept { givenTree = tree; }

std::optional<std::u16string> registryText(std::u16string_view key, std::u16string_view name) {
  const auto values = valuesOf(key);
  if (!values) return std::nullopt;
  const auto found = std::ranges::find_if(
      *values, [name](const StoredValue& value) { return equalNoCase(value.name, name); });
  return found != values->end() ? registryTextOf(found->bytes) : std::u16string(kRegistryError);
}

std::vector<RegistryValue> registryValues(std::u16string_view key) {
  std::vector<RegistryValue> values;
  for (StoredValue& each : valuesOf(key).value_or(std::vector<StoredValue>()))
    values.push_back({std::move(each.name), registryData(each.type, each.bytes)});
  return values;
}

std::vector<std::u16string> registryKeys(std::u16string_view key) {
  std::vector<std::u16string> keys;
  for (const StoredKey& each : treeAround(key)) {
    if (!isWithin(each.path, key) || each.path.size() == key.size()) continue;
    const std::u16string below = each.path.substr(key.empty() ? 0 : key.size() + 1);
    std::u16string child = below.substr(0, below.find(u'\\'));
    const auto isChild = [&child](std::u16string_view known) { return equalNoCase(known, child); };
    if (std::ranges::none_of(keys, isChild)) keys.push_back(std::move(child));
  }
  return keys;
}

}  // namespace quendal::platform
