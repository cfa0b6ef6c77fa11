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

/// A new object with one reference, which the caller owns. Null when memory is short.
template <class Object, class... Arguments>
[[nodiscard]] Object* makeObject(Arguments&&... arguments) noexcept {
  try {
    return new Object(std::forward<Arguments>(arguments)...);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

/// Owns one reference.
template <class Interface>
class Reference {
 public:
  Reference() = default;
  explicit Reference(Interface* taken) noexcept : object_(taken) {}
  Reference(Reference&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Reference& operator=(Reference&& other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Reference() {
    if (object_ != nullptr) object_->Release();
  }

  [[nodiscard]] Interface* get() const noexcept { return object_; }
  [[nodiscard]] Interface* release() noexcept { return std::exchange(object_, nullptr); }
  Interface* operator->() const noexcept { return object_; }
  explicit operator bool() const noexcept { return object_ != nullptr; }

 private:
  Interface* object_ = nullptr;
};

}  // namespace quendal::automation
