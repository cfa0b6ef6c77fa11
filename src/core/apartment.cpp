#include "core/apartment.h"

#include <memory>

#include "platform/thread_state.h"

namespace quendal {

void PageObjects::takeFrom(const Object& context) {
  session = Object::from(context.get(u"Session"));
  application = Object::from(context.get(u"Application"));
  request = Object::from(context.get(u"Request"));
  response = Object::from(context.get(u"Response"));
  server = Object::from(context.get(u"Server"));
}

Apartment& apartment() noexcept {
  return *static_cast<Apartment*>(platform::threadState(
      []() -> void* { return std::make_unique<Apartment>().release(); },
      [](void* state) { std::default_delete<Apartment>()(static_cast<Apartment*>(state)); }));
}

}  // namespace quendal
