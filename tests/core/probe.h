// A class with a member for every way a value can cross a call, for the tests of the boundary.
#pragma once

#include <quendal/object.h>

#include "core/enumerations.h"
#include "core/parameters.h"

namespace quendal::test {

class Probe {
 public:
  static constexpr std::u16string_view kClassName = u"Probe";

  // Each changes its reference arguments when `change` is set, and tells what it was given.
  std::u16string numbers(Ref<std::int16_t> small, Ref<std::int32_t> big, Ref<Boolean> flag,
                         Boolean change);
  std::u16string defaults(Ref<std::int16_t> number, std::u16string_view text, DefaultedRef& empty,
                          VariantRef& missing, Boolean flag, QuoteStyle style);
  void replace(VariantRef& target, const VARIANT& value);
  std::u16string texts(std::u16string_view byValue, TextRef byReference);
  std::u16string list(std::int32_t first, ArgumentList rest);
  std::u16string nameOf(const Object& object);
  std::int32_t fail(std::int32_t how, Ref<std::int16_t> changedFirst);
  Variant property() { return property_; }
  void setProperty(const VARIANT& value) { property_ = Variant::copyOf(value); }

 private:
  Variant property_;
};

}  // namespace quendal::test

namespace quendal {
template <>
const ClassDescription& describe<test::Probe>();
}  // namespace quendal
