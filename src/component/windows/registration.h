// Registration of the component for the machine or for the current user.
#pragma once

#include <quendal/automation.h>

namespace quendal {

enum class RegistrationScope { Machine, User };

/// Writes the classes, their programmatic identifiers and the type library, and for the machine the
/// source of events. E_ACCESSDENIED when the caller may not; a failed registration is taken back.
HRESULT registerComponent(RegistrationScope scope) noexcept;

/// Removes everything that registerComponent wrote. What is not there is no error; E_ACCESSDENIED
/// when the caller may not remove what is. What both bitnesses share stays while the other bitness
/// is registered.
HRESULT unregisterComponent(RegistrationScope scope) noexcept;

}  // namespace quendal
