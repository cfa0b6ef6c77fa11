#include "platform/module.h"

#include "platform/windows/wide.h"

namespace quendal::platform {
namespace {

constexpr std::size_t kMaxPath = 32768;  // of the system

}  // namespace

std::u16string ownModulePath() {
  HMODULE module = nullptr;
  if (!GetModuleHandleExW(
          GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
          reinterpret_cast<const wchar_t*>(&ownModulePath), &module)) {
    return {};
  }
  for (std::u16string path(MAX_PATH, u'\0'); path.size() <= kMaxPath;
       path.resize(path.size() * 2)) {
    const DWORD size =
        GetModuleFileNameW(module, wideBuffer(path.data()), static_cast<DWORD>(path.size()));
    if (size == path.size()) continue;  // cut short
    path.resize(size);
    return path;
  }
  return {};
}

}  // namespace quendal::platform
