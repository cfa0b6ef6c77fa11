#include "versioninfo/version_info.h"

#include <cstdint>

#include "core/apartment.h"
#include "platform/files.h"
#include "platform/messages.h"

namespace quendal {

void VersionInfo::setFullPathName(std::u16string_view path) {
  std::u16string resolved = platform::absolutePath(path);
  if (resolved.empty()) return;
  fullPathName_ = std::move(resolved);
  refresh();
}

std::u16string VersionInfo::fullPathName() { return fullPathName_; }

Boolean VersionInfo::available() { return booleanOf(record_.available); }

std::u16string VersionInfo::predefinedName(VersionString which) {
  return std::u16string(versioninfo::predefinedName(which));
}

std::u16string VersionInfo::predefinedValue(VersionString which) {
  return std::u16string(record_.value(which));
}

void VersionInfo::refresh() { record_ = versioninfo::readVersionRecord(fullPathName_); }

std::int32_t VersionInfo::listFileVersions(TextRef directory, const Object& dictionary) {
  constexpr std::int32_t kNoSuchFolder = -1;
  clearError();
  // The number of the last step that failed; what the page does meanwhile has errors of its own.
  std::int32_t status = 0;
  const auto attempt = [&status](const auto& step) {
    if (!ignoringErrors(step)) status = pendingError();
  };
  std::u16string folder;
  std::vector<std::u16string> names;
  attempt([&] {
    // Absolute, as a drive alone is its current folder and takes no separator.
    folder = platform::absolutePath(directory.view());
    if (!platform::lookAt(folder).isFolder) {
      status = kNoSuchFolder;
      return;
    }
    if (folder.back() != u'\\') folder += u'\\';
    auto error = platform::FileError::None;
    names = platform::listFiles(folder, &error);
    if (error != platform::FileError::None) throw AutomationError(static_cast<int>(error));
  });
  for (const std::u16string& name : names) {
    attempt([&] {
      setFullPathName(folder + name);
      if (record_.available)
        dictionary.put(u"Item", name, predefinedValue(VersionString::ProductVersion));
    });
    platform::pumpMessages();
  }
  return status;
}

}  // namespace quendal
