// Reference counting for the runtime's own objects. They belong to the thread that made them, so
// the count is a plain number.
#pragma once

#include <quendal/automation.h>

#include <new>
#include <utility>

namespace quendal::automation {

/// A class that implements `Interfaces`, starting with one reference. The class answers
/// QueryInterface itself.
template <class... Interfaces>
class RefCounted : public Interfaces... {
 public:
  RefCounted(const RefCounted&) = delete;
  RefCounted& operator=(const RefCounted&) = delete;

  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }

  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) destroy();
    return left;
  }

 protected:
  RefCounted() = default;
  virtual ~RefCounted() = default;

  /// Runs when the last reference goes; a class that has to order its destruction overrides it.
  virtual void destroy() noexcept { delete this; }

 private:
  ULONG references_ = 1;
};

/// Answers QueryInterface for an object that has one interface and IUnknown.
template <class Interface>
HRESULT answerFor(Interface* self, REFIID own, REFIID iid, void** object) noexcept {
  if (object == nullptr) return E_POINTER;
  *object = iid == own || iid == IID_IUnknown ? self : nullptr;
  if (*object == nullptr) return E_NOINTERFACE;
  self->AddRef();
  return S_OK;
}

/// A new object with one reference, which the caller owns. Null when memory is short.
template <class Object, class... Arguments>
[[nodiscard]] Object* makeObject(Arguments&&... arguments) noexcept {
  try {
    return new Object(std::forward<Arguments>(arguments)...);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

}  // namespace quendal::automation
