#include "automation/dictionary_access.h"

#include <new>

namespace quendal::automation {

// The system's factory of dictionaries, asked for once.
struct DictionaryMaker::Kept {
  explicit Kept(IClassFactory* factory) noexcept : factory(factory) {}
  Kept(const Kept&) = delete;
  Kept& operator=(const Kept&) = delete;
  ~Kept() { factory->Release(); }

  IClassFactory* const factory;
};

DictionaryMaker::DictionaryMaker() noexcept = default;
DictionaryMaker::~DictionaryMaker() = default;

IDictionary* DictionaryMaker::make() noexcept {
  void* found = nullptr;
  if (kept_ == nullptr) {
    if (FAILED(CoGetClassObject(kClsidDictionary, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory,
                                &found)))
      return nullptr;
    kept_.reset(new (std::nothrow) Kept(static_cast<IClassFactory*>(found)));
    if (kept_ == nullptr) {
      static_cast<IClassFactory*>(found)->Release();
      return nullptr;
    }
  }
  found = nullptr;
  if (FAILED(kept_->factory->CreateInstance(nullptr, kIidDictionary, &found))) return nullptr;
  return static_cast<IDictionary*>(found);
}

HRESULT DictionaryMaker::add(IDictionary& dictionary, std::u16string_view key,
                             VARIANT& takenItem) noexcept {
  VARIANT keyValue;
  VariantInit(&keyValue);
  keyValue.bstrVal = SysAllocStringLen(oleText(key.data()), static_cast<UINT>(key.size()));
  if (keyValue.bstrVal != nullptr) keyValue.vt = VT_BSTR;
  const HRESULT result = keyValue.bstrVal == nullptr
                             ? E_OUTOFMEMORY
                             : dictionary.Add(&keyValue, &takenItem);  // keeps copies
  VariantClear(&keyValue);
  VariantClear(&takenItem);
  return result;
}

DictionaryReader::DictionaryReader(IUnknown& object) noexcept {
  void* found = nullptr;
  if (SUCCEEDED(object.QueryInterface(kIidDictionary, &found)))
    dictionary_ = static_cast<IDictionary*>(found);
}

HRESULT DictionaryReader::next() noexcept { return nextCopied(); }

}  // namespace quendal::automation
