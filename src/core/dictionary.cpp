#include "core/dictionary.h"

#include <cstdint>

#include "automation/dispatch.h"

namespace quendal {
namespace {

// The function table takes its arguments by non-const pointer but only reads them.
VARIANT* argument(const Variant& value) noexcept { return const_cast<Variant*>(&value); }

}  // namespace

void checkDictionary(HRESULT code) {
  if (SUCCEEDED(code)) return;
  IErrorInfo* info = nullptr;
  if (GetErrorInfo(0, &info) == S_OK && info != nullptr) info->Release();
  const AutomationError error = AutomationError::fromRuntime(code);
  // A number's own text, not that of a code; what has no number is passed on.
  if (error.number() == code) throw error;
  throw AutomationError(error.number());
}

Dictionary Dictionary::create(Compare compare) {
  const Object created = Object::attach(automation::newDictionary());
  std::optional<Dictionary> dictionary = created ? from(created) : std::nullopt;
  if (!dictionary) throw AutomationError(error_number::kCannotCreate);
  if (compare == Compare::Text)
    checkDictionary(dictionary->table()->put_CompareMode(static_cast<int>(compare)));
  return *std::move(dictionary);
}

std::optional<Dictionary> Dictionary::from(const Object& object) {
  void* found = nullptr;
  if (!object || FAILED(object.dispatch()->QueryInterface(automation::kIidDictionary, &found)))
    return std::nullopt;
  return Dictionary(Object::attach(static_cast<automation::IDictionary*>(found)));
}

void Dictionary::add(const Variant& key, const Variant& item) const {
  checkDictionary(table()->Add(argument(key), argument(item)));
}

void Dictionary::set(const Variant& key, const Variant& item) const {
  // Objects are stored as references; not every system's container has an entry of its own for it.
  HRESULT code = E_NOTIMPL;
  if (item.vt == VT_DISPATCH) code = table()->putref_Item(argument(key), argument(item));
  if (code == E_NOTIMPL) code = table()->put_Item(argument(key), argument(item));
  checkDictionary(code);
}

Variant Dictionary::item(const Variant& key) const {
  Variant result;
  checkDictionary(table()->get_Item(argument(key), &result));
  return result;
}

std::int32_t Dictionary::count() const {
  LONG count = 0;
  checkDictionary(table()->get_Count(&count));
  return static_cast<std::int32_t>(count);
}

Variant Dictionary::keys() const {
  Variant result;
  checkDictionary(table()->Keys(&result));
  return result;
}

Variant Dictionary::items() const {
  Variant result;
  checkDictionary(table()->Items(&result));
  return result;
}

bool Dictionary::contains(const Variant& key) const {
  VARIANT_BOOL exists = VARIANT_FALSE;
  checkDictionary(table()->Exists(argument(key), &exists));
  return exists != VARIANT_FALSE;
}

void Dictionary::remove(const Variant& key) const {
  checkDictionary(table()->Remove(argument(key)));
}

void Dictionary::removeAll() const { checkDictionary(table()->RemoveAll()); }

}  // namespace quendal
