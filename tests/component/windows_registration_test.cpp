// What the DLL writes into the registry and takes away.
#include <quendal/object.h>
#include <sddl.h>

#include <cstdio>

#include "base/utf8.h"
#include "component/catalogue.h"
#include "core/guid.h"
#include "core/names.h"
#include "platform/registry.h"
#include "tests/component/windows_dll.h"

namespace quendal::test {
namespace {

constexpr bool kIs64Bit = sizeof(void*) == 8;
const std::u16string kClasses = u"Software\\Classes\\";
const std::u16string kIdentifier = kClasses + u"QUENDAL_REPORTS_ASP.FUNCTIONS";
const std::u16string kEventSource =
    u"SYSTEM\\CurrentControlSet\\Services\\EventLog\\Application\\QUENDAL_REPORTS_ASP";

bool keyExists(HKEY root, const std::u16string& path) {
  HKEY key = nullptr;
  const LSTATUS status = RegOpenKeyExW(root, oleText(path.c_str()), 0, KEY_READ, &key);
  if (status == ERROR_SUCCESS) RegCloseKey(key);
  return status != ERROR_FILE_NOT_FOUND;
}
bool machineHas(const std::u16string& path) { return keyExists(HKEY_LOCAL_MACHINE, path); }

/// The keys that a registration leaves below a root.
std::vector<std::u16string> registeredKeys() {
  std::vector<std::u16string> keys = {kEventSource,
                                      kClasses + u"TypeLib\\" + registryForm(kLibraryId)};
  for (const CatalogueEntry& entry : catalogue()) {
    const ClassIdentity& identity = entry.description.identity();
    keys.push_back(kClasses + u"Interface\\" + registryForm(identity.interfaceId));
    if (identity.programId.empty()) continue;
    keys.push_back(kClasses + u"CLSID\\" + registryForm(identity.classId));
    keys.push_back(kClasses + std::u16string(identity.programId));
  }
  return keys;
}

class RegistrationTest : public ComponentTest {
 protected:
  HRESULT call(const char* name) const { return dll_.call(name); }
  HRESULT install(bool on) const {
    return dll_.entry<HRESULT STDMETHODCALLTYPE(BOOL, PCWSTR)>("DllInstall")(on, L"user");
  }
};

TEST_F(RegistrationTest, IsForTheMachineOrTheUserAndLeavesNothingBehind) {
  const struct {
    HKEY root;
    std::function<HRESULT()> on, off;
  } scopes[] = {{HKEY_LOCAL_MACHINE, [&] { return call("DllRegisterServer"); },
                 [&] { return call("DllUnregisterServer"); }},
                {HKEY_CURRENT_USER, [&] { return install(true); }, [&] { return install(false); }}};
  for (const auto& scope : scopes) {
    ASSERT_EQ(scope.on(), S_OK);
    EXPECT_TRUE(keyExists(scope.root, kIdentifier + u"\\CLSID"));
    EXPECT_EQ(machineHas(kEventSource), scope.root == HKEY_LOCAL_MACHINE);
    CLSID classId{};
    if (keyExists(HKEY_CLASSES_ROOT, u"QUENDAL_REPORTS_ASP.LOGGING\\CLSID"))
      EXPECT_EQ(CLSIDFromProgID(L"QUENDAL_REPORTS_ASP.LOGGING", &classId), S_OK);
    else
      std::puts("not shown: finding a class; this system does not look at a user's classes");
    ASSERT_EQ(scope.off(), S_OK);
    for (const std::u16string& key : registeredKeys())
      for (const HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER})
        EXPECT_FALSE(keyExists(root, key)) << toUtf8(key);
    EXPECT_EQ(scope.off(), S_OK);  // nothing left to remove is no error
  }
}

TEST_F(RegistrationTest, WritesWhatTheSystemLooksFor) {
  ASSERT_EQ(call("DllRegisterServer"), S_OK);
  const std::u16string name = u"QUENDAL_REPORTS_ASP.FUNCTIONS";
  const ClassIdentity& identity = findCreatable(name)->description.identity();
  const std::u16string id = registryForm(identity.classId);
  const std::u16string key = kClasses + u"CLSID\\" + id;
  const struct {
    std::u16string path;
    std::u16string_view name;
    std::u16string text;
  } rows[] = {{key, u"", name},
              {key + u"\\InprocServer32", u"", dllPath()},
              {key + u"\\InprocServer32", u"ThreadingModel", u"Apartment"},
              {key + u"\\ProgID", u"", name},
              {key + u"\\Programmable", u"", u""},
              {key + u"\\TypeLib", u"", u"{DC707A50-8E70-479C-94D7-BD63088DE00B}"},
              {key + u"\\Version", u"", u"1.0"},
              {kIdentifier, u"", std::u16string(identity.help)},
              {kIdentifier + u"\\CLSID", u"", id}};
  for (const auto& row : rows)
    EXPECT_EQ(toUtf8(platform::registryText(row.path, row.name).value_or(u"-")), toUtf8(row.text))
        << toUtf8(row.path);
  // The viewer finds the texts there, whatever the type of the event.
  EXPECT_TRUE(platform::registryText(kEventSource, u"EventMessageFile")
                  .value_or(u"-")
                  .ends_with(u"\\EventCreate.exe"));
  DWORD types = 0, size = sizeof(types);
  RegGetValueW(HKEY_LOCAL_MACHINE, oleText(kEventSource.c_str()), L"TypesSupported",
               RRF_RT_REG_DWORD, nullptr, &types, &size);
  EXPECT_EQ(types, 7u);
  EXPECT_EQ(call("DllUnregisterServer"), S_OK);
}

/// Sets what anybody may do with a key: an access list in the system's notation.
void protect(const std::u16string& path, const wchar_t* accessList) {
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  ASSERT_TRUE(ConvertStringSecurityDescriptorToSecurityDescriptorW(accessList, SDDL_REVISION_1,
                                                                   &descriptor, nullptr));
  HKEY key = nullptr;
  EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, oleText(path.c_str()), 0, WRITE_DAC, &key), 0);
  EXPECT_EQ(RegSetKeySecurity(key, DACL_SECURITY_INFORMATION, descriptor), 0);
  RegCloseKey(key);
  LocalFree(descriptor);
}

TEST_F(RegistrationTest, WithoutTheRightNothingChangesAndTheCallerIsTold) {
  ASSERT_EQ(call("DllRegisterServer"), S_OK);
  protect(kIdentifier, L"D:P(A;;WD;;;WD)");
  for (const char* const entry : {"DllRegisterServer", "DllUnregisterServer"})
    EXPECT_EQ(call(entry), E_ACCESSDENIED) << entry;
  EXPECT_TRUE(machineHas(kIdentifier));
  EXPECT_FALSE(keyExists(HKEY_CURRENT_USER, kIdentifier));
  protect(kIdentifier, L"D:P(A;;KA;;;WD)");
  EXPECT_EQ(call("DllUnregisterServer"), S_OK);
  EXPECT_FALSE(machineHas(kIdentifier));
}

TEST_F(RegistrationTest, WhatTheOtherBitnessNeedsStays) {
  const auto make = [](const std::u16string& path, REGSAM view) {
    HKEY key = nullptr;
    EXPECT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, oleText(path.c_str()), 0, nullptr, 0,
                              KEY_READ | view, nullptr, &key, nullptr),
              0);
    RegCloseKey(key);
  };
  const std::u16string library = kClasses + u"TypeLib\\" + registryForm(kLibraryId);
  const std::u16string other = library + u"\\1.0\\0\\" + (kIs64Bit ? u"win32" : u"win64");
  make(other, 0);
  EXPECT_EQ(call("DllUnregisterServer"), S_OK);
  EXPECT_TRUE(machineHas(other));
  RegDeleteTreeW(HKEY_LOCAL_MACHINE, oleText(library.c_str()));
  if (!kIs64Bit) return;  // a 32-bit Windows has no other view of the classes

  const GUID id = findCreatable(u"QUENDAL_REPORTS_ASP.FUNCTIONS")->description.identity().classId;
  const std::u16string classKey = kClasses + u"CLSID\\" + registryForm(id);
  make(classKey, KEY_WOW64_32KEY);
  ASSERT_EQ(call("DllRegisterServer"), S_OK);
  for (const bool isThere : {true, false}) {
    EXPECT_EQ(call("DllUnregisterServer"), S_OK);
    EXPECT_EQ(machineHas(kIdentifier), isThere);
    EXPECT_EQ(machineHas(kEventSource), isThere);
    RegDeleteKeyExW(HKEY_LOCAL_MACHINE, oleText(classKey.c_str()), KEY_WOW64_32KEY, 0);
  }
}

}  // namespace
}  // namespace quendal::test
