#include <quendal/classic_asp.h>

#include "component/catalogue.h"
#include "component/class_factory.h"

HRESULT DllGetClassObject(REFCLSID classId, REFIID iid, void** object) noexcept {
  return quendal::classObject(classId, iid, object);
}

HRESULT DllCanUnloadNow() noexcept { return quendal::canUnload() ? S_OK : S_FALSE; }

HRESULT DllRegisterServer() noexcept { return S_OK; }

HRESULT DllUnregisterServer() noexcept { return S_OK; }

namespace quendal {

Object createObject(std::u16string_view programId) {
  const CatalogueEntry* entry = findCreatable(programId);
  if (entry == nullptr) throw AutomationError(error_number::kCannotCreate);
  return entry->create();
}

}  // namespace quendal
