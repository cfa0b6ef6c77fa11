// Destruction of nested values without nested calls.
//
// Arrays hold arrays and dictionaries hold dictionaries, to any depth a page or a JSON text likes.
// Destroying one by plain recursion would need stack in proportion, and overflow it. So every
// container destroys itself through `tearDown`: a few levels run at once, in the usual order;
// anything deeper is only noted in a list and runs when the outermost call comes back to it. The
// note lives inside the container, so destruction needs no memory.
#pragma once

namespace quendal::automation {

/// The part of a container that can be noted for destruction.
struct Teardown {
  Teardown* next = nullptr;
  /// Destroys the container that this note is part of.
  void (*run)(Teardown& self) noexcept = nullptr;
};

/// Destroys a container, now or before the outermost call of `tearDown` on this thread returns.
void tearDown(Teardown& container) noexcept;

}  // namespace quendal::automation
