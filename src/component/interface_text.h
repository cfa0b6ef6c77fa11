// The interface definition of the type library, as the classes' tables tell it.
#pragma once

#include <string>

namespace quendal {

/// The IDL text from which the type library is compiled.
[[nodiscard]] std::string interfaceText();

}  // namespace quendal
