#include "platform/registry.h"

#include <quendal/automation.h>

#include <array>
#include <memory>

#include "platform/code_page.h"
#include "platform/registry_data.h"

namespace quendal::platform {
namespace {

constexpr DWORD kNameSize = 260;
constexpr DWORD kFirstDataSize = 4096;

struct KeyCloser {
  void operator()(HKEY key) const noexcept {
    if (key != HKEY_LOCAL_MACHINE) RegCloseKey(key);
  }
};
using Key = std::unique_ptr<std::remove_pointer_t<HKEY>, KeyCloser>;

// Null when the key cannot be opened. The empty path is the root itself.
Key openKey(std::u16string_view path, REGSAM access) {
  if (path.empty()) return Key(HKEY_LOCAL_MACHINE);
  HKEY key = nullptr;
  if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, toSystemBytes(path).c_str(), 0, access, &key) != 0)
    key = {};
  return Key(key);
}

}  // namespace

std::optional<std::u16string> registryText(std::u16string_view key, std::u16string_view name) {
  const Key opened = openKey(key, KEY_QUERY_VALUE);
  if (!opened) return std::nullopt;
  std::array<char, kMaxTextBytes> buffer;
  buffer.fill(' ');
  DWORD size = kMaxTextBytes;
  DWORD type = 0;
  if (RegQueryValueExA(opened.get(), toSystemBytes(name).c_str(), nullptr, &type,
                       reinterpret_cast<BYTE*>(buffer.data()), &size) != 0) {
    return std::u16string(kRegistryError);
  }
  return registryTextOf({buffer.data(), size});
}

std::vector<RegistryValue> registryValues(std::u16string_view key) {
  std::vector<RegistryValue> values;
  const Key opened = openKey(key, KEY_READ);
  if (!opened) return values;
  std::array<char, kNameSize> name;
  std::vector<char> data(kFirstDataSize);
  for (DWORD index = 0;; ++index) {
    DWORD nameSize = 0;
    DWORD size = 0;
    DWORD type = 0;
    const auto read = [&] {
      nameSize = kNameSize;
      size = static_cast<DWORD>(data.size());
      return RegEnumValueA(opened.get(), index, name.data(), &nameSize, nullptr, &type,
                           reinterpret_cast<BYTE*>(data.data()), &size);
    };
    LSTATUS status = read();
    if (status == ERROR_MORE_DATA) {  // once more, with room for the size it told
      if (size > data.size()) data.resize(size);
      status = read();
    }
    if (status != ERROR_SUCCESS) return values;
    values.push_back(
        {fromCodePage({name.data(), nameSize}), registryData(type, {data.data(), size})});
  }
}

std::vector<std::u16string> registryKeys(std::u16string_view key) {
  std::vector<std::u16string> keys;
  const Key opened = openKey(key, KEY_READ);
  if (!opened) return keys;
  std::array<char, kNameSize> name{};
  for (DWORD index = 0; RegEnumKeyA(opened.get(), index, name.data(), kNameSize) == ERROR_SUCCESS;
       ++index) {
    keys.push_back(fromCodePage(name.data()));
  }
  return keys;
}

}  // namespace quendal::platform
