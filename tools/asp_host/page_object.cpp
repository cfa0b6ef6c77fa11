#include "page_object.h"

#include <utility>
#include <vector>

namespace quendal::host {
namespace {

std::vector<Variant> copiesOf(Arguments arguments) {
  std::vector<Variant> copies;
  for (const VARIANT& argument : arguments) copies.push_back(Variant::copyOf(argument));
  return copies;
}

}  // namespace

HostObject pageObject(StopFlag stop) {
  return HostObject().beforeCalls([stop = std::move(stop)] {
    if (*stop) raiseEnded();
  });
}

HostObject& addCollection(HostObject& object, std::u16string_view name, const Object& collection) {
  return object.member(
      name,
      [collection](Arguments arguments) {
        return arguments.empty() ? Variant(collection)
                                 : collection.getWith(u"Item", copiesOf(arguments));
      },
      procedure(
          [collection](Arguments arguments) { collection.putWith(u"Item", copiesOf(arguments)); }));
}

HostObject::Call procedure(std::function<void(Arguments)> step) {
  return [step = std::move(step)](Arguments arguments) {
    step(arguments);
    return Variant();
  };
}

void raise(int number, std::u16string_view description) {
  throw AutomationError(number, description, u"ASP host");
}

void raiseEnded() { raise(error_number::kInvalidCall, u"The page has ended"); }

}  // namespace quendal::host
