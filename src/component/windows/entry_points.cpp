// The standard entry points of an in-process component.
#include <quendal/automation.h>

#include <cwchar>

#include "component/class_factory.h"
#include "component/windows/registration.h"

using quendal::RegistrationScope;

extern "C" {

/// Once loaded, the module stays in the process. Clients may hold its type information, and threads
/// their state, longer than any object, and the compiler's runtime gives back neither the handles
/// nor the slot of thread-local storage that it takes (on x86 already when it is loaded).
BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, void*) {
  if (reason == DLL_PROCESS_ATTACH)
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                       reinterpret_cast<const wchar_t*>(module), &module);
  return TRUE;
}

HRESULT STDMETHODCALLTYPE DllGetClassObject(REFCLSID classId, REFIID iid, void** object) {
  return quendal::classObject(classId, iid, object);
}

HRESULT STDMETHODCALLTYPE DllCanUnloadNow() { return quendal::canUnload() ? S_OK : S_FALSE; }

/// For the machine.
HRESULT STDMETHODCALLTYPE DllRegisterServer() {
  return quendal::registerComponent(RegistrationScope::Machine);
}

/// Whatever of the two registrations there is; a failure to take the machine's away is reported.
HRESULT STDMETHODCALLTYPE DllUnregisterServer() {
  const HRESULT user = quendal::unregisterComponent(RegistrationScope::User);
  const HRESULT machine = quendal::unregisterComponent(RegistrationScope::Machine);
  return FAILED(machine) ? machine : user;
}

/// `regsvr32 /n /i:user` registers for the current user's own programs, which a web server is not;
/// any other argument, or none, as DllRegisterServer.
HRESULT STDMETHODCALLTYPE DllInstall(BOOL install, PCWSTR arguments) {
  const bool forUser = arguments != nullptr && _wcsicmp(arguments, L"user") == 0;
  if (!forUser) return install != FALSE ? DllRegisterServer() : DllUnregisterServer();
  return install != FALSE ? quendal::registerComponent(RegistrationScope::User)
                          : quendal::unregisterComponent(RegistrationScope::User);
}

}  // extern "C"
