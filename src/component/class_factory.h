// What stands behind the entry points of an in-process component.
#pragma once

#include <quendal/automation.h>

namespace quendal {

/// The class factory of one of the two creatable classes. CLASS_E_CLASSNOTAVAILABLE for any other.
HRESULT classObject(REFCLSID classId, REFIID iid, void** object) noexcept;

/// Whether nothing of this module is in use.
[[nodiscard]] bool canUnload() noexcept;

}  // namespace quendal
