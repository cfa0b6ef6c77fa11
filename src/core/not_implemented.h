// For members that stand in their interfaces before their work is built.
#pragma once

#include <quendal/error.h>

#include <string>

namespace quendal {

/// Raises E_NOTIMPL, naming the member.
[[noreturn]] inline void raiseNotImplemented(std::u16string_view member) {
  throw AutomationError::passedOn(E_NOTIMPL, {}, std::u16string(member) + u" is not implemented");
}

}  // namespace quendal
