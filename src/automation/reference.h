// The owner of an automation object.
#pragma once

#include <quendal/automation.h>

#include <memory>

namespace quendal::automation {

struct ReleaseReference {
  void operator()(IUnknown* object) const noexcept { object->Release(); }
};

/// Owns one reference, which it is given.
template <typename Interface>
using Reference = std::unique_ptr<Interface, ReleaseReference>;

}  // namespace quendal::automation
