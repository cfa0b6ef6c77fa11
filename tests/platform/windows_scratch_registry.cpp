#include <quendal/automation.h>

#include "tests/platform/scratch_registry.h"

namespace quendal::platform {

ScratchRegistry::ScratchRegistry(const std::vector<ScratchKey>& keys) {
  for (const ScratchKey& each : keys) {
    HKEY key = nullptr;
    if (RegCreateKeyExA(HKEY_LOCAL_MACHINE, each.path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr,
                        &key, nullptr) != 0) {
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

ScratchRegistry::~ScratchRegistry() {
  RegDeleteTreeW(HKEY_LOCAL_MACHINE, oleText(kScratchRoot.data()));
}

}  // namespace quendal::platform
