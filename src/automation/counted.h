// Interfaces implemented in C++, the same in every home; counted across threads.
#pragma once

#include <quendal/automation.h>

#include <atomic>
#include <initializer_list>
#include <memory>
#include <utility>

#include "automation/reference.h"

namespace quendal::automation {

/// The reference count and identity of an object that lives until its last reference goes.
template <class... Interfaces>
class Counted : public Interfaces... {
 public:
  Counted() = default;
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;

  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) destroy();
    return left;
  }

  virtual ~Counted() = default;

 protected:
  /// Runs when the last reference goes; a class that has to order its destruction overrides it.
  virtual void destroy() noexcept { std::default_delete<Counted>()(this); }

  struct Answer {
    const IID& id;
    IUnknown* object;
  };
  /// QueryInterface over a list; its first interface is the identity.
  HRESULT answer(REFIID iid, std::initializer_list<Answer> list, void** object) {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    for (const Answer& entry : list)
      if (iid == entry.id || (iid == IID_IUnknown && &entry == list.begin())) {
        *object = entry.object;
        AddRef();
        return S_OK;
      }
    return E_NOINTERFACE;
  }

 private:
  std::atomic<ULONG> references_ = 1;
};

template <class Class, class... Parameters>
Reference<Class> makeCounted(Parameters&&... parameters) {
  return Reference<Class>(
      std::make_unique<Class>(std::forward<Parameters>(parameters)...).release());
}

}  // namespace quendal::automation
