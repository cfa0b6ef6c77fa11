#include "component/class_factory.h"

#include <atomic>
#include <memory>

#include "component/catalogue.h"
#include "core/dispatch.h"

namespace quendal {
namespace {

class ClassFactory final : public IClassFactory {
 public:
  explicit ClassFactory(const CatalogueEntry& entry) noexcept : entry_(entry) {
    ++moduleUseCount();
  }
  ClassFactory(const ClassFactory&) = delete;
  ClassFactory& operator=(const ClassFactory&) = delete;
  ~ClassFactory() { --moduleUseCount(); }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) noexcept override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (!(iid == IID_IUnknown || iid == IID_IClassFactory)) return E_NOINTERFACE;
    *object = static_cast<IClassFactory*>(this);
    AddRef();
    return S_OK;
  }

  ULONG STDMETHODCALLTYPE AddRef() noexcept override { return ++references_; }

  ULONG STDMETHODCALLTYPE Release() noexcept override {
    const ULONG left = --references_;
    if (left == 0) std::default_delete<ClassFactory>()(this);
    return left;
  }

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid,
                                           void** object) noexcept override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    try {
      return entry_.create().dispatch()->QueryInterface(iid, object);
    } catch (...) {
      return publishCurrentException(nullptr);
    }
  }

  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) noexcept override {
    moduleUseCount() += lock != 0 ? 1 : -1;
    return S_OK;
  }

 private:
  const CatalogueEntry& entry_;
  std::atomic<ULONG> references_ = 1;
};

}  // namespace

HRESULT classObject(REFCLSID classId, REFIID iid, void** object) noexcept {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  try {
    const CatalogueEntry* entry = findCreatable(classId);
    if (entry == nullptr) return CLASS_E_CLASSNOTAVAILABLE;
    IClassFactory* factory = std::make_unique<ClassFactory>(*entry).release();
    const HRESULT code = factory->QueryInterface(iid, object);
    factory->Release();
    return code;
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

bool canUnload() noexcept { return moduleUseCount() == 0; }

}  // namespace quendal
