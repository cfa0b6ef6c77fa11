// The automation ABI, from the system's own headers, without the names that get in the way.
#pragma once

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
// after windows.h
#include <objbase.h>
#include <oleauto.h>
#include <olectl.h>

#define QUENDAL_EXPORT

#undef GetObject
#undef GetUserName
#undef GetComputerName
#undef GetClassName
#undef CreateFile
#undef GetMessage
#undef CopyFile
#undef MoveFile
#undef DeleteFile

namespace quendal {

/// Library text (`char16_t`) as the system's characters (`wchar_t`, 16 bits here) and back. The
/// Windows builds switch type-based alias analysis off, which makes these casts well defined.
inline const OLECHAR* oleText(const char16_t* text) noexcept {
  return reinterpret_cast<const OLECHAR*>(text);
}
inline const char16_t* plainText(const OLECHAR* text) noexcept {
  return reinterpret_cast<const char16_t*>(text);
}

}  // namespace quendal
