#include "automation/posix/array_enumerator.h"

#include <algorithm>
#include <memory>

#include "automation/counted.h"
#include "automation/posix/variants.h"

namespace quendal::automation {
namespace {

using SharedArray = std::shared_ptr<SAFEARRAY>;  // by an enumerator and its clones

class ArrayEnumerator final : public Counted<IEnumVARIANT> {
 public:
  ArrayEnumerator(SharedArray array, ULONG position) noexcept
      : array_(std::move(array)), position_(position) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    return answer(iid, {{IID_IEnumVARIANT, this}}, object);
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
    *copy = nullptr;
    return guarded([&] {
      *copy = makeCounted<ArrayEnumerator>(array_, position_).release();
      return S_OK;
    });
  }

 private:
  [[nodiscard]] ULONG left() const noexcept { return array_->rgsabound[0].cElements - position_; }

  SharedArray array_;
  ULONG position_;
};

}  // namespace

HRESULT enumerateArray(SAFEARRAY* taken, IUnknown** enumerator) noexcept {
  *enumerator = nullptr;
  return guarded([&] {  // an owner that cannot be made destroys the array
    *enumerator =
        makeCounted<ArrayEnumerator>(SharedArray(taken, &SafeArrayDestroy), ULONG{0}).release();
    return S_OK;
  });
}

}  // namespace quendal::automation
