// How large a value is in memory, the same in both homes.
#pragma once

#include <quendal/automation.h>

#include <cstddef>

namespace quendal::automation {

/// Bytes that a value of a type takes as an array's element or behind a reference; 0 for a type
/// that cannot be either.
[[nodiscard]] constexpr USHORT elementSize(VARTYPE type) noexcept {
  switch (type) {
    case VT_I1:
    case VT_UI1:
      return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
      return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
      return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
      return 8;
    case VT_BSTR:
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return sizeof(void*);
    case VT_DECIMAL:
      return sizeof(DECIMAL);
    case VT_VARIANT:
      return sizeof(VARIANT);
    default:
      return 0;
  }
}

}  // namespace quendal::automation
