// What the automation objects that a page sees have in common.
#pragma once

#include <quendal/host_object.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string_view>

namespace quendal::host {

using Arguments = HostObject::Arguments;

/// Set when a page must come to its end.
using StopFlag = std::shared_ptr<const std::atomic<bool>>;

/// An object of a page, to be described further. Once the flag is set, every call of it raises 5.
[[nodiscard]] HostObject pageObject(StopFlag stop);

/// A property that gives an object, mostly a collection. What it is called or put with goes to the
/// Item of that.
HostObject& addCollection(HostObject& object, std::u16string_view name, const Object& collection);

/// A member without a result.
[[nodiscard]] HostObject::Call procedure(std::function<void(Arguments)> step);

/// Raises an error of the host's own.
[[noreturn]] void raise(int number, std::u16string_view description);
[[noreturn]] void raiseEnded();

}  // namespace quendal::host
