#include "core/apartment.h"

#include <memory>
#include <new>
#include <stdexcept>

namespace quendal {

void PageObjects::takeFrom(const Object& context) {
  session = Object::from(context.get(u"Session"));
  application = Object::from(context.get(u"Application"));
  request = Object::from(context.get(u"Request"));
  response = Object::from(context.get(u"Response"));
  server = Object::from(context.get(u"Server"));
}

void PageObjects::abandon() noexcept {
  for (Object* const slot : {&session, &application, &request, &response, &server})
    static_cast<void>(slot->release());
}

Apartment::~Apartment() { page.abandon(); }

Apartment* apartmentIfAny() noexcept { return static_cast<Apartment*>(platform::threadState()); }

Apartment& apartment() {
  if (apartmentIfAny() == nullptr) platform::setThreadState(std::make_unique<Apartment>());
  return *apartmentIfAny();
}

void setPendingError(std::int32_t number) noexcept {
  try {
    apartment().errorNumber = number;
  } catch (const std::bad_alloc&) {
    return;  // the call that needs the apartment raises this itself
  }
}

std::int32_t setPendingException() noexcept {
  std::int32_t number = 0;
  try {
    throw;
  } catch (const AutomationError& error) {
    number = error.number();
  } catch (const std::bad_alloc&) {
    number = error_number::kOutOfMemory;
  } catch (const std::length_error&) {  // a text longer than any that memory could hold
    number = error_number::kOutOfMemory;
  } catch (...) {
    number = error_number::kInternal;
  }
  setPendingError(number);
  return number;
}

}  // namespace quendal
