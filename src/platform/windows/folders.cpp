#include "platform/folders.h"

#include <quendal/automation.h>
// after windows.h
#include <shlobj.h>

#include <array>
#include <memory>
#include <string_view>

#include "platform/code_page.h"

namespace quendal::platform {
namespace {

constexpr UINT kSystemFolderSize = 144;

struct TaskMemory {
  void operator()(void* block) const noexcept { CoTaskMemFree(block); }
};
using ItemList = std::unique_ptr<ITEMIDLIST, TaskMemory>;

}  // namespace

std::u16string specialFolder(int id) {
  LPITEMIDLIST list = nullptr;
  const HRESULT found = SHGetSpecialFolderLocation(nullptr, id, &list);
  const ItemList owner(list);
  if (FAILED(found)) return {};
  std::array<char, MAX_PATH> path{};
  if (!SHGetPathFromIDListA(owner.get(), path.data())) return {};
  return fromCodePage(std::string_view(path.data()));
}

std::u16string systemFolder() {
  std::array<char, kSystemFolderSize> path{};
  // A longer path than fits leaves the buffer without any text.
  if (GetSystemDirectoryA(path.data(), kSystemFolderSize) == 0) return {};
  return fromCodePage(std::string_view(path.data()));
}

}  // namespace quendal::platform
