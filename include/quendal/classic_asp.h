// What a C++ host includes to use the library where there is no component registry.
//
//   #include <quendal/classic_asp.h>
//
//   quendal::Object logger = quendal::createObject(u"QUENDAL_REPORTS_ASP.LOGGING");
//   logger.call(u"SetLogPath", u"/var/log/site/");
//   logger.call(u"SetLogFile", u"LOG.TXT");
//   logger.call(u"WriteLog", std::int16_t{2}, u"Hello");
//
// Objects belong to the thread that created them.
#pragma once

#include <quendal/object.h>

#include <string_view>

namespace quendal {

/// Creates an object by programmatic identifier, in any case. Raises 429 for an identifier that
/// cannot be created: only QUENDAL_REPORTS_ASP.LOGGING and QUENDAL_REPORTS_ASP.FUNCTIONS can.
[[nodiscard]] QUENDAL_EXPORT Object createObject(std::u16string_view programId);

}  // namespace quendal

extern "C" {

/// The standard entry points of an in-process component.
QUENDAL_EXPORT HRESULT DllGetClassObject(REFCLSID classId, REFIID iid, void** object) noexcept;
/// S_OK when nothing of the library is in use, else S_FALSE.
QUENDAL_EXPORT HRESULT DllCanUnloadNow() noexcept;
/// There is nothing to register here: both succeed and do nothing.
QUENDAL_EXPORT HRESULT DllRegisterServer() noexcept;
QUENDAL_EXPORT HRESULT DllUnregisterServer() noexcept;

}  // extern "C"
