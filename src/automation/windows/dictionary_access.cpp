#include "automation/dictionary_access.h"

#include <quendal/text.h>

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

HRESULT DictionaryMaker::add(IDictionary& dictionary, std::u16string_view key, VARIANT& item) {
  const Text text(key);
  VARIANT keyValue{};
  keyValue.vt = VT_BSTR;
  keyValue.bstrVal = text.get();
  const HRESULT result = dictionary.Add(&keyValue, &item);  // keeps copies
  VariantClear(&item);
  return result;
}

DictionaryReader::DictionaryReader(IUnknown& object) noexcept {
  void* found = nullptr;
  if (SUCCEEDED(object.QueryInterface(kIidDictionary, &found)))
    dictionary_ = static_cast<IDictionary*>(found);
}

HRESULT DictionaryReader::next() noexcept { return nextCopied(); }

}  // namespace quendal::automation
