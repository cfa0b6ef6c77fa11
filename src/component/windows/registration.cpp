#include "component/windows/registration.h"

#include <string>

#include "component/catalogue.h"
#include "core/guid.h"
#include "core/names.h"
#include "platform/module.h"
#include "platform/windows/event_source.h"

// In the system since Windows Vista, but not in every toolchain's headers.
extern "C" {
HRESULT STDMETHODCALLTYPE RegisterTypeLibForUser(ITypeLib*, OLECHAR* path, OLECHAR* helpFolder);
HRESULT STDMETHODCALLTYPE UnRegisterTypeLibForUser(REFGUID id, WORD major, WORD minor, LCID,
                                                   SYSKIND);
}

namespace quendal {
namespace {

constexpr SYSKIND kSystemKind = sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32;
constexpr REGSAM kOtherBitness = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;

const wchar_t* wide(const std::u16string& text) noexcept { return oleText(text.c_str()); }

HKEY rootOf(RegistrationScope scope) noexcept {
  return scope == RegistrationScope::Machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

const std::u16string& classesPath() {
  static const std::u16string path = u"Software\\Classes\\";
  return path;
}

std::u16string eventSourcePath() {
  return u"SYSTEM\\CurrentControlSet\\Services\\EventLog\\Application\\" +
         std::u16string(plainText(platform::kEventSource));
}

HRESULT toResult(LSTATUS status) noexcept { return HRESULT_FROM_WIN32(static_cast<DWORD>(status)); }

/// Creates a key below the classes of a scope and sets one of its text values.
HRESULT setValue(RegistrationScope scope, const std::u16string& key, const wchar_t* name,
                 const std::u16string& value) {
  const std::u16string path = classesPath() + key;
  const auto bytes = static_cast<DWORD>((value.size() + 1) * sizeof(char16_t));
  return toResult(RegSetKeyValueW(rootOf(scope), wide(path), name, REG_SZ, value.c_str(), bytes));
}

bool keyExists(RegistrationScope scope, const std::u16string& key, REGSAM view) {
  HKEY opened = nullptr;
  const LSTATUS status =
      RegOpenKeyExW(rootOf(scope), wide(classesPath() + key), 0, KEY_READ | view, &opened);
  if (status == ERROR_SUCCESS) RegCloseKey(opened);
  return status != ERROR_FILE_NOT_FOUND;
}

/// Removes a key with all below it. What is not there is no error.
HRESULT removeTree(RegistrationScope scope, const std::u16string& path) {
  const LSTATUS status = RegDeleteTreeW(rootOf(scope), wide(path));
  return status == ERROR_FILE_NOT_FOUND ? S_OK : toResult(status);
}

std::u16string classKey(const ClassIdentity& identity) {
  return u"CLSID\\" + registryForm(identity.classId);
}

HRESULT registerClass(RegistrationScope scope, const ClassIdentity& identity,
                      const std::u16string& modulePath) {
  struct Entry {
    std::u16string key;
    const wchar_t* name;
    std::u16string value;
  };
  const std::u16string classId = registryForm(identity.classId);
  const std::u16string key = classKey(identity);
  const std::u16string programId(identity.programId);
  const Entry entries[] = {
      {key, nullptr, programId},
      {key + u"\\InprocServer32", nullptr, modulePath},
      {key + u"\\InprocServer32", L"ThreadingModel", u"Apartment"},
      {key + u"\\ProgID", nullptr, programId},
      {key + u"\\Programmable", nullptr, u""},
      {key + u"\\TypeLib", nullptr, registryForm(kLibraryId)},
      {key + u"\\Version", nullptr, u"1.0"},
      {programId, nullptr, std::u16string(identity.help)},
      {programId + u"\\CLSID", nullptr, classId},
  };
  for (const Entry& entry : entries) {
    const HRESULT code = setValue(scope, entry.key, entry.name, entry.value);
    if (FAILED(code)) return code;
  }
  return S_OK;
}

/// Lets the system's functions for type libraries, which write to the merged view of all classes,
/// reach the machine's alone: in the merged view a key that the user has too is the user's.
class MachineClasses {
 public:
  explicit MachineClasses(RegistrationScope scope) {
    if (scope != RegistrationScope::Machine) return;
    HKEY classes = nullptr;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Classes", 0, MAXIMUM_ALLOWED, &classes) !=
        ERROR_SUCCESS)
      return;
    isSet_ = RegOverridePredefKey(HKEY_CLASSES_ROOT, classes) == ERROR_SUCCESS;
    RegCloseKey(classes);
  }
  MachineClasses(const MachineClasses&) = delete;
  MachineClasses& operator=(const MachineClasses&) = delete;
  ~MachineClasses() {
    if (isSet_) RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr);
  }

 private:
  bool isSet_ = false;
};

HRESULT registerTypeLibrary(RegistrationScope scope, const std::u16string& modulePath) {
  const MachineClasses classes(scope);
  ITypeLib* library = nullptr;
  HRESULT code = LoadTypeLibEx(wide(modulePath), REGKIND_NONE, &library);
  if (FAILED(code)) return code;
  std::u16string path = modulePath;
  auto* ownPath = reinterpret_cast<OLECHAR*>(path.data());
  code = scope == RegistrationScope::Machine ? RegisterTypeLib(library, ownPath, nullptr)
                                             : RegisterTypeLibForUser(library, ownPath, nullptr);
  library->Release();
  return code;
}

HRESULT unregisterTypeLibrary(RegistrationScope scope) {
  const MachineClasses classes(scope);
  const auto remove =
      scope == RegistrationScope::Machine ? &UnRegisterTypeLib : &UnRegisterTypeLibForUser;
  const HRESULT code =
      remove(kLibraryId, kLibraryMajor, kLibraryMinor, LOCALE_NEUTRAL, kSystemKind);
  // What is not registered is an error to the system. The bitnesses have keys of their own below
  // that of the version, "1.0".
  const std::u16string ownKey = u"TypeLib\\" + registryForm(kLibraryId) + u"\\1.0\\0\\" +
                                (kSystemKind == SYS_WIN64 ? u"win64" : u"win32");
  return keyExists(scope, ownKey, 0) ? code : S_OK;
}

/// The texts of events are shown through the system's own tool for events, in which every number
/// has the event's text itself as its message. So the viewer holds no file of the component open.
HRESULT registerEventSource() {
  const std::u16string path = eventSourcePath();
  const std::u16string_view file = u"%SystemRoot%\\System32\\EventCreate.exe";
  LSTATUS status =
      RegSetKeyValueW(HKEY_LOCAL_MACHINE, wide(path), L"EventMessageFile", REG_EXPAND_SZ,
                      file.data(), static_cast<DWORD>((file.size() + 1) * sizeof(char16_t)));
  const DWORD types = EVENTLOG_ERROR_TYPE | EVENTLOG_WARNING_TYPE | EVENTLOG_INFORMATION_TYPE;
  if (status == ERROR_SUCCESS)
    status = RegSetKeyValueW(HKEY_LOCAL_MACHINE, wide(path), L"TypesSupported", REG_DWORD, &types,
                             sizeof(types));
  return toResult(status);
}

}  // namespace

HRESULT registerComponent(RegistrationScope scope) noexcept {
  try {
    const std::u16string modulePath = platform::ownModulePath();
    HRESULT code = modulePath.empty() ? E_UNEXPECTED : S_OK;
    for (const CatalogueEntry& entry : catalogue()) {
      const ClassIdentity& identity = entry.description.identity();
      if (SUCCEEDED(code) && !identity.programId.empty())
        code = registerClass(scope, identity, modulePath);
    }
    if (SUCCEEDED(code)) code = registerTypeLibrary(scope, modulePath);
    if (SUCCEEDED(code) && scope == RegistrationScope::Machine) code = registerEventSource();
    if (FAILED(code)) unregisterComponent(scope);
    return code;
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

HRESULT unregisterComponent(RegistrationScope scope) noexcept {
  try {
    HRESULT result = unregisterTypeLibrary(scope);
    const auto remove = [&](const std::u16string& path) {
      const HRESULT code = removeTree(scope, path);
      if (FAILED(code)) result = code;
    };
    bool otherIsThere = false;
    for (const CatalogueEntry& entry : catalogue()) {
      const ClassIdentity& identity = entry.description.identity();
      if (identity.programId.empty()) continue;
      remove(classesPath() + classKey(identity));
      if (keyExists(scope, classKey(identity), kOtherBitness))
        otherIsThere = true;
      else
        remove(classesPath() + std::u16string(identity.programId));
    }
    if (scope == RegistrationScope::Machine && !otherIsThere) remove(eventSourcePath());
    return result;
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace quendal
