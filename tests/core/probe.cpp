#include "tests/core/probe.h"

#include <stdexcept>

#include "base/text.h"
#include "core/guid.h"
#include "core/members.h"

namespace quendal::test {

std::u16string Probe::numbers(Ref<std::int16_t> small, Ref<std::int32_t> big, Ref<Boolean> flag,
                              Boolean change) {
  const std::u16string given = decimalText(small) + u"," + decimalText(big) + u"," +
                               decimalText(static_cast<VARIANT_BOOL>(Boolean{flag}));
  if (isTrue(change)) {
    small = static_cast<std::int16_t>(small + 1);
    big = big + 1;
    flag = booleanOf(!isTrue(flag));
  }
  return given;
}

std::u16string Probe::defaults(Ref<std::int16_t> value, std::u16string_view text,
                               DefaultedRef& empty, VariantRef& missing, Boolean flag,
                               QuoteStyle style) {
  return decimalText(value) + u"|" + std::u16string(text) + u"|" + typeNameOf(empty.value()) +
         u"|" + typeNameOf(missing.value()) + u"|" + decimalText(static_cast<VARIANT_BOOL>(flag)) +
         u"|" + decimalText(static_cast<std::int32_t>(style));
}

void Probe::replace(VariantRef& target, const VARIANT& value) {
  target.set(Variant::copyOf(value));
}

std::u16string Probe::texts(std::u16string_view byValue, TextRef byReference) {
  return std::u16string(byValue) + u"+" + std::u16string(byReference.view());
}

std::u16string Probe::list(std::int32_t first, ArgumentList rest) {
  std::u16string text = decimalText(first);
  for (const VARIANT& value : rest) text += u"," + joinedTextOf(value);
  return text;
}

std::u16string Probe::nameOf(const Object& object) {
  return object ? textOf(object.get(u"Property")) : u"Nothing";
}

std::int32_t Probe::fail(std::int32_t how, Ref<std::int16_t> changedFirst) {
  changedFirst = 7;
  if (how == 1) throw AutomationError(8732, u"its text", u"its source");
  if (how == 2) throw std::bad_alloc();
  if (how == 3) throw std::runtime_error("unforeseen");
  if (how == 4) throw std::length_error("a text longer than any");
  return 1;
}

}  // namespace quendal::test

namespace quendal {

template <>
const ClassDescription& describe<test::Probe>() {
  using P = test::Probe;
  static const MemberRow rows[] = {
      method<&P::numbers>(u"Numbers", u"",
                          {in(u"Small"), in(u"Big"), in(u"Flag"), optional(u"Change")}),
      method<&P::defaults>(
          u"Defaults", u"",
          {optional(u"Number", 35), optional(u"Text", u"TEXT"), optional(u"Empty", EmptyText{}),
           optional(u"Missing"), optional(u"Flag"), optional(u"Style")}),
      method<&P::replace>(u"Replace", u"", {in(u"Target"), in(u"Value")}),
      method<&P::texts>(u"Texts", u"", {in(u"ByValue"), in(u"ByReference")}),
      method<&P::list>(u"List", u"", {in(u"First"), in(u"Rest")}),
      method<&P::nameOf>(u"NameOf", u"", {in(u"Object")}),
      method<&P::fail>(u"Fail", u"", {in(u"How"), in(u"ChangedFirst")}),
      get<&P::property>(u"Property", u""),
      put<&P::setProperty>(u"Property", u"", {in(u"Value")}),
  };
  static const ClassDescription description({P::kClassName,
                                             u"_Probe",
                                             guid("9C2A7E10-0F53-4E0B-9B51-3A1D4A6E7F01"),
                                             guid("9C2A7E10-0F53-4E0B-9B51-3A1D4A6E7F02"),
                                             {},
                                             u""},
                                            rows);
  return description;
}

}  // namespace quendal
