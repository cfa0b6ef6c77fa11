// Reading a dictionary by its function table alone: copies of its keys and items.
#include "automation/dictionary_access.h"

namespace quendal::automation {
namespace {

// The array that a list of keys or items holds. E_UNEXPECTED when it holds something else.
HRESULT takeList(VARIANT& list, SAFEARRAY*& array) noexcept {
  if (list.vt != (VT_ARRAY | VT_VARIANT) || list.parray == nullptr || list.parray->cDims != 1) {
    VariantClear(&list);
    return E_UNEXPECTED;
  }
  array = list.parray;
  return S_OK;
}

const VARIANT* elementOf(const SAFEARRAY* array, std::size_t position) noexcept {
  if (position >= array->rgsabound[0].cElements) return nullptr;
  return static_cast<const VARIANT*>(array->pvData) + position;
}

}  // namespace

DictionaryReader::~DictionaryReader() {
  if (keys_ != nullptr) SafeArrayDestroy(keys_);
  if (items_ != nullptr) SafeArrayDestroy(items_);
  if (dictionary_ != nullptr) dictionary_->Release();
}

HRESULT DictionaryReader::nextCopied() noexcept {
  if (keys_ == nullptr) {
    VARIANT list;
    VariantInit(&list);
    HRESULT result = dictionary_->Keys(&list);
    if (SUCCEEDED(result)) result = takeList(list, keys_);
    if (FAILED(result)) return result;
    result = dictionary_->Items(&list);
    if (SUCCEEDED(result)) result = takeList(list, items_);
    if (FAILED(result)) return result;
  }
  if (items_ == nullptr) return S_FALSE;  // reading them has failed before
  key_ = elementOf(keys_, position_);
  item_ = elementOf(items_, position_);
  ++position_;
  return key_ != nullptr && item_ != nullptr ? S_OK : S_FALSE;
}

}  // namespace quendal::automation
