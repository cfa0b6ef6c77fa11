// The owner of a system object.
#pragma once

#include <quendal/automation.h>

#include <memory>

namespace quendal::automation {

/// The owner of a reference to an automation object, of those that the system gives out.
struct ReleaseReference {
  void operator()(IUnknown* object) const noexcept { object->Release(); }
};
template <typename Interface>
using Reference = std::unique_ptr<Interface, ReleaseReference>;

}  // namespace quendal::automation
