#include <quendal/automation.h>

#include "tests/platform/scratch_registry.h"

namespace quendal::platform {
namespace {

const std::string kRoot(kScratchRoot.begin(), kScratchRoot.end());

}  // namespace

ScratchRegistry::ScratchRegistry(const std::vector<ScratchKey>& keys) : ready_(true) {
  for (const ScratchKey& each : keys) {
    const std::string path = each.path.empty() ? kRoot : kRoot + "\\" + each.path;
    HKEY key = nullptr;
    if (RegCreateKeyExA(HKEY_LOCAL_MACHINE, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key,
                        nullptr) != 0) {
      ready_ = false;
      return;
    }
    for (const ScratchValue& value : each.values) {
      RegSetValueExA(key, value.name.c_str(), 0, value.type,
                     reinterpret_cast<const BYTE*>(value.bytes.data()),
                     static_cast<DWORD>(value.bytes.size()));
    }
    RegCloseKey(key);
  }
}

ScratchRegistry::~ScratchRegistry() { RegDeleteTreeA(HKEY_LOCAL_MACHINE, kRoot.c_str()); }

}  // namespace quendal::platform
