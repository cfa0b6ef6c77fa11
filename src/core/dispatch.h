// The automation object that stands before each class: identity, lifetime, calls by name and the
// one place where exceptions become HRESULTs and error information.
#pragma once

#include <quendal/object.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <span>

#include "core/class_description.h"

namespace quendal {

/// Objects and server locks that keep the module loaded: the one count that is process-wide,
/// because unloading is.
std::atomic<std::int32_t>& moduleUseCount() noexcept;

/// The entries of IUnknown and IDispatch that every function table begins with.
std::span<const AnyFunction> dispatchEntries() noexcept;

/// Turns the exception being handled into an HRESULT: into `exception` when there is one (a call
/// by name), else into the thread's error information. Also leaves it pending for `Catch`.
HRESULT publishCurrentException(EXCEPINFO* exception) noexcept;

/// The part of an object that the ABI sees. Its first field is its function table, so that its
/// address is a valid interface pointer for IUnknown, IDispatch and the class's own interface.
class DispatchObject {
 public:
  DispatchObject(const DispatchObject&) = delete;
  DispatchObject& operator=(const DispatchObject&) = delete;

  [[nodiscard]] IDispatch* dispatch() noexcept { return reinterpret_cast<IDispatch*>(this); }
  [[nodiscard]] const ClassDescription& description() const noexcept { return class_; }

  ULONG addRef() noexcept;
  ULONG release() noexcept;
  HRESULT queryInterface(REFIID iid, void** object) noexcept;
  /// Type information by the identifier of the interface or of the class.
  HRESULT typeInfo(REFIID id, ITypeInfo** info) noexcept;
  HRESULT invoke(DISPID id, WORD flags, const DISPPARAMS& params, VARIANT* result,
                 EXCEPINFO* exception, UINT* argumentError) noexcept;

 protected:
  using Destroy = void (*)(DispatchObject&) noexcept;
  DispatchObject(const ClassDescription& description, Destroy destroy) noexcept;
  ~DispatchObject();

 private:
  /// A small interface besides the dispatch interface, which shares the object's identity.
  template <class Interface>
  class Side : public Interface {
   public:
    explicit Side(DispatchObject& owner) noexcept : owner_(owner) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) noexcept override {
      return owner_.queryInterface(iid, object);
    }
    ULONG STDMETHODCALLTYPE AddRef() noexcept override { return owner_.addRef(); }
    ULONG STDMETHODCALLTYPE Release() noexcept override { return owner_.release(); }

   protected:
    DispatchObject& owner_;
  };
  class ErrorSupport final : public Side<ISupportErrorInfo> {
   public:
    using Side::Side;
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) noexcept override;
  };
  class ClassInfo final : public Side<IProvideClassInfo> {
   public:
    using Side::Side;
    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) noexcept override;
  };

  const AnyFunction* table_;  // must stay the first field
  const ClassDescription& class_;
  Destroy destroy_;
  std::atomic<ULONG> references_ = 1;
  ErrorSupport errorSupport_{*this};
  ClassInfo classInfo_{*this};
};

/// An automation object with its class instance.
template <class C>
class Component final : public DispatchObject {
 public:
  Component() : DispatchObject(describe<C>(), &destroy) {}
  C instance;

 private:
  static void destroy(DispatchObject& object) noexcept {
    std::default_delete<Component>()(static_cast<Component*>(&object));
  }
};

/// Owns a reference to an automation object of a known class.
template <class C>
class Owned {
 public:
  Owned() noexcept = default;
  [[nodiscard]] static Owned make() {
    Owned result;
    result.component_ = std::make_unique<Component<C>>().release();
    result.object_ = Object::attach(result.component_->dispatch());
    return result;
  }

  C* operator->() const noexcept { return &component_->instance; }
  C& operator*() const noexcept { return component_->instance; }
  explicit operator bool() const noexcept { return static_cast<bool>(object_); }
  /// A further reference, as automation sees the object; null when this owns nothing.
  [[nodiscard]] Object object() const noexcept { return object_; }
  void reset() noexcept { *this = {}; }

 private:
  Object object_;
  Component<C>* component_ = nullptr;
};

}  // namespace quendal
