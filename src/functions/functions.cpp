#include "functions/functions.h"

#include <compare>

#include "core/apartment.h"
#include "core/compare.h"
#include "functions/pumping_wait.h"

namespace quendal {
namespace {

/// The value that `replaces(item, current)` leaves as the last one. Null when there are none.
template <class Replaces>
Variant winnerOf(ArgumentList values, const Replaces& replaces) {
  clearError();
  if (values.empty()) return Variant::null();
  // Deliberate: the elements of an array in the first place are never compared.
  if (follow(values.front()).vt == kVariantArray) return {};
  Variant current;
  ignoringErrors([&] { current = Variant::copyOf(values.front()); });
  for (const VARIANT& argument : values) {
    Variant item;
    // Deliberate: what cannot be compared becomes the current value.
    bool wins = true;
    ignoringErrors([&] {
      item = Variant::copyOf(argument);
      wins = replaces(compareValues(item, current));
    });
    if (wins) current = std::move(item);
  }
  return current;
}

}  // namespace

Functions::Functions() {
  ignoringErrors([&] { json_ = Owned<Json>::make(); });
  ignoringErrors([&] { arrays_ = Owned<ArrayFunctions>::make(); });
  ignoringErrors([&] { concat_ = Owned<Concat>::make(); });
  ignoringErrors([&] { strings_ = Owned<StringFunctions>::make(); });
  ignoringErrors([&] { dictionaries_ = Owned<DictionaryFunctions>::make(); });
  ignoringErrors([&] { os_ = Owned<OsInfo>::make(); });
}

void Functions::sleep(VariantRef& milliseconds) {
  clearError();
  ignoringErrors([&] { pumpingWait(int32Of(milliseconds.value())); });
}

Variant Functions::max(ArgumentList values) {
  return winnerOf(values, [](std::partial_ordering order) { return std::is_gt(order); });
}

Variant Functions::min(ArgumentList values) {
  return winnerOf(values, [](std::partial_ordering order) { return std::is_lt(order); });
}

}  // namespace quendal
