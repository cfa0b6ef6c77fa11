// `VersionInfo`: the version resource of a file, for page scripts and the reports.
#pragma once

#include <quendal/object.h>

#include <cstdint>

#include "core/class_description.h"
#include "core/enumerations.h"
#include "core/variant_ref.h"
#include "versioninfo/version_record.h"

namespace quendal {

class VersionInfo {
 public:
  static constexpr std::u16string_view kClassName = u"VersionInfo";

  /// Resolves a path and reads the file at once. A path that cannot be resolved changes nothing.
  void setFullPathName(std::u16string_view path);
  std::u16string fullPathName();

  Boolean available();
  /// A text of the fixed record.
  template <std::u16string versioninfo::VersionRecord::*Text>
  std::u16string text() {
    return record_.*Text;
  }

  /// Display name and value of a string; empty for a number outside the enumeration.
  std::u16string predefinedName(VersionString which);
  std::u16string predefinedValue(VersionString which);
  template <VersionString Which>
  std::u16string value() {
    return predefinedValue(Which);
  }

  /// Reads the file again; what the previous reading told is gone.
  void refresh();

  /// Sets `dictionary(file name) = product version` for every file of a folder that has a version
  /// resource. Returns -1 for a missing folder, else 0 or the number of the last error. Raises
  /// nothing. Leaves this object as for the last file read.
  std::int32_t listFileVersions(TextRef directory, const Object& dictionary);

 private:
  std::u16string fullPathName_;
  versioninfo::VersionRecord record_;
};

template <>
const ClassDescription& describe<VersionInfo>();

}  // namespace quendal
