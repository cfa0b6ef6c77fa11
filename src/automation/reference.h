// The owner of an automation object.
#pragma once

#include <quendal/automation.h>

#include <memory>

namespace quendal::automation {

struct ReleaseReference {
  template <typename Interface>
  void operator()(Interface* object) const noexcept {
    object->Release();
  }
};

/// Owns one reference, which it is given, to an object of one interface or of several.
template <typename Interface>
using Reference = std::unique_ptr<Interface, ReleaseReference>;

}  // namespace quendal::automation
