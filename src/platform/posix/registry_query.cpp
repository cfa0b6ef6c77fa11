#include "platform/posix/registry_query.h"

#include <utility>

#include "platform/code_page.h"
#include "platform/locale.h"
#include "platform/registry_data.h"

namespace quendal::platform {
namespace {

constexpr char16_t kSeparator = u'\\';

std::u16string_view withoutOuterSeparators(std::u16string_view path) {
  while (path.starts_with(kSeparator)) path.remove_prefix(1);
  while (path.ends_with(kSeparator)) path.remove_suffix(1);
  return path;
}

// Whether `path` is `ancestor` or lies below it.
bool isWithin(std::u16string_view path, std::u16string_view ancestor) {
  if (ancestor.empty()) return true;
  return path.size() >= ancestor.size() &&
         (path.size() == ancestor.size() || path[ancestor.size()] == kSeparator) &&
         compareTextNoCase(path.substr(0, ancestor.size()), ancestor) == 0;
}

}  // namespace

StoredValue storedText(std::u16string_view name, std::u16string_view text) {
  std::string bytes = toCodePage(text);
  bytes += '\0';
  return {std::u16string(name), registry_type::kText, std::move(bytes)};
}

RegistryQuery::RegistryQuery(std::u16string_view path)
    : path_(withoutOuterSeparators(path)), exists_(path_.empty()) {}

bool RegistryQuery::wants(std::u16string_view path) const {
  return isWithin(path, path_) || isWithin(path_, path);
}

void RegistryQuery::tellKey(std::u16string_view path) {
  path = withoutOuterSeparators(path);
  const bool within = isWithin(path, path_);
  inside_ = within && path.size() == path_.size();
  if (!within) return;
  exists_ = true;
  if (inside_) return;
  if (!path_.empty()) path.remove_prefix(path_.size() + 1);
  const std::u16string_view child = path.substr(0, path.find(kSeparator));
  if (!child.empty() && seenKeys_.insert(lowerCase(child)).second) keys_.emplace_back(child);
}

void RegistryQuery::tellValue(StoredValue value) {
  if (!inside_) return;
  const auto [at, isNew] = valueByName_.try_emplace(lowerCase(value.name), values_.size());
  if (isNew) {
    values_.push_back(std::move(value));
  } else {
    values_[at->second] = std::move(value);
  }
}

const StoredValue* RegistryQuery::value(std::u16string_view name) const {
  const auto found = valueByName_.find(lowerCase(name));
  return found != valueByName_.end() ? &values_[found->second] : nullptr;
}

}  // namespace quendal::platform
