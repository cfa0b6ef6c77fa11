// The library's public identity.
#pragma once

#include <quendal/automation.h>

#include <string_view>

#include "core/guid.h"

namespace quendal {

/// Name of the type library, and the source of errors that name no other.
inline constexpr std::u16string_view kLibraryName = u"QUENDAL_REPORTS_ASP";
inline constexpr std::u16string_view kLibraryHelp = u"Tolvex Reports Classic ASP Library";
inline constexpr GUID kLibraryId = guid("DC707A50-8E70-479C-94D7-BD63088DE00B");
inline constexpr WORD kLibraryMajor = 1;
inline constexpr WORD kLibraryMinor = 0;

}  // namespace quendal
