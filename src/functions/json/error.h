// The errors that JSON raises under its own number.
#pragma once

#include <quendal/error.h>

#include <string_view>

namespace quendal::json {

[[noreturn]] inline void raiseError(std::u16string_view description) {
  constexpr int kJsonError = 8732;
  throw AutomationError(kJsonError, description, u"QUENDAL_CLASSIC_ASP.DLL");
}

}  // namespace quendal::json
