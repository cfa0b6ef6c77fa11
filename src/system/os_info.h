// `ClsOSInfo`: facts about the server for page scripts. Every property asks afresh.
#pragma once

#include <quendal/variant.h>

#include <cstdint>
#include <string>

#include "core/class_description.h"
#include "platform/locale.h"
#include "system/queries.h"

namespace quendal {

class OsInfo {
 public:
  static constexpr std::u16string_view kClassName = u"ClsOSInfo";

  /// Both clear the error state.
  OsInfo() noexcept;
  OsInfo(const OsInfo&) = delete;
  OsInfo& operator=(const OsInfo&) = delete;
  ~OsInfo();

  /// One item of the user's locale by its platform number; empty when there is none.
  template <std::uint32_t Item>
  std::u16string localeItem() {
    return platform::localeText(Item);
  }
  Variant dateFormatShort();

  /// A dictionary of twelve names, keyed 1 to 12, by the locale item of the first.
  template <std::uint32_t January>
  Variant monthNames() {
    return monthNames(January);
  }
  /// Adds every name under the key 1 and so always raises 457; deliberate.
  template <std::uint32_t Monday>
  Variant dayNames() {
    return dayNames(Monday);
  }

  /// The folder for temporary files, without trailing "\"; created when it is missing.
  std::u16string tempDir();
  std::u16string os();
  std::u16string userName();
  std::u16string systemDrive();
  std::u16string winDir();
  /// The system folder followed by one NUL character, as this property has always answered.
  std::u16string systemDir();
  std::int32_t tickCount();
  std::u16string upTime();
  std::u16string ipAddress();
  Boolean bit();
  std::u16string bitAsString();

  /// A shell folder by its number, with a trailing "\", or the empty string.
  template <int Folder>
  std::u16string folder() {
    return system::querySpecialFolder(Folder);
  }

 private:
  static Variant monthNames(std::uint32_t january);
  static Variant dayNames(std::uint32_t monday);
};

template <>
const ClassDescription& describe<OsInfo>();

}  // namespace quendal
