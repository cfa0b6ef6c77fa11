#include "platform/version_resource.h"

#include <quendal/automation.h>
// after windows.h
#include <winver.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <span>
#include <utility>
#include <vector>

#include "base/path_text.h"
#include "platform/code_page.h"

namespace quendal::platform {
namespace {

static_assert(sizeof(FixedFileInfo) == sizeof(VS_FIXEDFILEINFO));

std::u16string upToNul(std::span<const char> bytes) {
  return fromCodePage(
      {bytes.data(),
       static_cast<std::size_t>(std::find(bytes.begin(), bytes.end(), '\0') - bytes.begin())});
}

class SystemVersionResource final : public VersionResource {
 public:
  explicit SystemVersionResource(std::vector<char> block) : block_(std::move(block)) {}

  std::optional<FixedFileInfo> fixedInfo() const override {
    const auto bytes = query("\\");
    FixedFileInfo info;
    if (bytes.size() < sizeof info) return {};
    std::memcpy(&info, bytes.data(), sizeof info);
    return info;
  }

  std::optional<Translation> firstTranslation() const override {
    const auto bytes = query("\\VarFileInfo\\Translation");
    Translation entry;
    if (bytes.size() < sizeof entry) return {};
    std::memcpy(&entry, bytes.data(), sizeof entry);
    return entry;
  }

  std::u16string string(Translation table, std::u16string_view key) const override {
    const auto bytes = query(toSystemBytes(
        std::u16string(u"\\StringFileInfo\\").append(tableKey(table)).append(u"\\").append(key)));
    if (bytes.empty()) return {};
    // The stated length counts the NUL in some files and not in others: the NUL alone tells.
    return upToNul({bytes.data(), block_.data() + block_.size()});
  }

 private:
  // The value of an entry, never beyond the block; empty when there is none. The system converts
  // a text into the spare half of the block.
  std::span<const char> query(const std::string& path) const {
    void* value = nullptr;
    UINT size = 0;
    if (!VerQueryValueA(block_.data(), path.c_str(), &value, &size) || value == nullptr) return {};
    const char* const begin = static_cast<const char*>(value);
    const char* const end = block_.data() + block_.size();
    if (begin < block_.data() || begin >= end) return {};
    return {begin, std::min<std::size_t>(size, static_cast<std::size_t>(end - begin))};
  }

  std::vector<char> block_;
};

}  // namespace

std::unique_ptr<VersionResource> readVersionResource(std::u16string_view path) {
  if (!isPath(path)) return nullptr;
  const std::string name = toSystemBytes(path);
  DWORD ignored = 0;
  const DWORD size = GetFileVersionInfoSizeA(name.c_str(), &ignored);
  if (size == 0) return nullptr;
  std::vector<char> block(size);
  if (!GetFileVersionInfoA(name.c_str(), 0, size, block.data())) return nullptr;
  return std::make_unique<SystemVersionResource>(std::move(block));
}

std::u16string languageName(std::uint16_t language) {
  std::array<char, 256> name{};
  const DWORD length = VerLanguageNameA(language, name.data(), static_cast<DWORD>(name.size()));
  // Some systems count the NUL.
  return upToNul(std::span(name).first(std::min<std::size_t>(length, name.size())));
}

}  // namespace quendal::platform
