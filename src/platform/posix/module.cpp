#include "platform/module.h"

#include <dlfcn.h>

#include <cstdlib>
#include <cstring>

#include "base/utf8.h"
#include "platform/posix/host_files.h"

namespace quendal::platform {
std::u16string ownModulePath() {
  Dl_info info{};
  if (::dladdr(reinterpret_cast<const void*>(&ownModulePath), &info) == 0) return {};
  // A name without a folder is that of a program found along the search path.
  const bool hasFolder = info.dli_fname != nullptr && std::strchr(info.dli_fname, '/') != nullptr;
  const CText path(::realpath(hasFolder ? info.dli_fname : "/proc/self/exe", nullptr));
  return path != nullptr ? fromUtf8(path.get()) : std::u16string();
}

}  // namespace quendal::platform
