#include "platform/version_resource.h"

#include <utility>

#include "platform/posix/byte_source.h"
#include "platform/posix/native_path.h"
#include "platform/posix/pe_image.h"
#include "platform/posix/version_block.h"

namespace quendal::platform {

std::unique_ptr<VersionResource> readVersionResource(std::u16string_view path) {
  FileBytes file(NativePath(path).c_str());
  if (!file.isOpen()) return nullptr;
  auto block = readVersionBlock(file);
  if (block.empty()) return nullptr;
  return std::make_unique<VersionBlock>(std::move(block));
}

}  // namespace quendal::platform
