#include "automation/posix/array_enumerator.h"

#include <algorithm>
#include <memory>
#include <new>

#include "automation/posix/ref_counted.h"

namespace quendal::automation {
namespace {

using SharedArray = std::shared_ptr<SAFEARRAY>;  // by an enumerator and its clones

class ArrayEnumerator final : public RefCounted<IEnumVARIANT> {
 public:
  ArrayEnumerator(SharedArray array, ULONG position) noexcept
      : array_(std::move(array)), position_(position) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (!(iid == IID_IEnumVARIANT) && !(iid == IID_IUnknown)) return E_NOINTERFACE;
    *object = static_cast<IEnumVARIANT*>(this);
    AddRef();
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* items, ULONG* fetched) override {
    if (fetched != nullptr) *fetched = 0;
    if (items == nullptr || (fetched == nullptr && count != 1)) return E_POINTER;
    const ULONG given = std::min(count, left());
    const auto* next = static_cast<const VARIANT*>(array_->pvData) + position_;
    for (ULONG i = 0; i < given; ++i) {
      items[i] = VARIANT{};
      const HRESULT result = VariantCopy(&items[i], &next[i]);
      if (SUCCEEDED(result)) continue;
      for (ULONG j = 0; j < i; ++j) VariantClear(&items[j]);
      return result;
    }
    position_ += given;
    if (fetched != nullptr) *fetched = given;
    return given == count ? S_OK : S_FALSE;
  }

  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
    const ULONG skipped = std::min(count, left());
    position_ += skipped;
    return skipped == count ? S_OK : S_FALSE;
  }

  HRESULT STDMETHODCALLTYPE Reset() override {
    position_ = 0;
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** copy) override {
    if (copy == nullptr) return E_POINTER;
    *copy = makeObject<ArrayEnumerator>(array_, position_);
    return *copy == nullptr ? E_OUTOFMEMORY : S_OK;
  }

 private:
  [[nodiscard]] ULONG left() const noexcept { return array_->rgsabound[0].cElements - position_; }

  SharedArray array_;
  ULONG position_;
};

}  // namespace

HRESULT enumerateArray(SAFEARRAY* taken, IUnknown** enumerator) noexcept {
  *enumerator = nullptr;
  try {
    *enumerator = makeObject<ArrayEnumerator>(SharedArray(taken, &SafeArrayDestroy), ULONG{0});
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;  // the array is gone: its owner destroys it when it cannot be made
  }
  return *enumerator == nullptr ? E_OUTOFMEMORY : S_OK;
}

}  // namespace quendal::automation
