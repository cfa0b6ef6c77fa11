#include "component/windows/registration.h"

#include <string>

#include "component/catalogue.h"
#include "core/guid.h"
#include "core/names.h"
#include "platform/module.h"

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
  if (RegOpenKeyExW(rootOf(scope), wide(classesPath() + key), 0, KEY_READ | view, &opened) !=
      ERROR_SUCCESS)
    return false;
  RegCloseKey(opened);
  return true;
}

/// Removes a key with all below it. What is not there is no error.
HRESULT removeTree(RegistrationScope scope, const std::u16string& key) {
  const LSTATUS status = RegDeleteTreeW(rootOf(scope), wide(classesPath() + key));
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

HRESULT registerTypeLibrary(RegistrationScope scope, const std::u16string& modulePath) {
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
  const auto remove =
      scope == RegistrationScope::Machine ? &UnRegisterTypeLib : &UnRegisterTypeLibForUser;
  const HRESULT code =
      remove(kLibraryId, kLibraryMajor, kLibraryMinor, LOCALE_NEUTRAL, kSystemKind);
  // The system takes a library that is not registered for an invalid argument.
  return keyExists(scope, u"TypeLib\\" + registryForm(kLibraryId), 0) ? code : S_OK;
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
    if (FAILED(code)) unregisterComponent(scope);
    return code;
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

HRESULT unregisterComponent(RegistrationScope scope) noexcept {
  try {
    HRESULT result = unregisterTypeLibrary(scope);
    for (const CatalogueEntry& entry : catalogue()) {
      const ClassIdentity& identity = entry.description.identity();
      if (identity.programId.empty()) continue;
      HRESULT code = removeTree(scope, classKey(identity));
      if (FAILED(code)) result = code;
      if (keyExists(scope, classKey(identity), kOtherBitness)) continue;
      code = removeTree(scope, std::u16string(identity.programId));
      if (FAILED(code)) result = code;
    }
    return result;
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace quendal
