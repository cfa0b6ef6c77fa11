// Entries that record failures: marked lines, script errors and parser errors.
#include <cstdint>

#include "core/apartment.h"
#include "logging/logging.h"

namespace quendal {
namespace {

constexpr std::u16string_view kMarker = u"*** ERROR *** ";
constexpr std::u16string_view kCriticalBanner =
    u"*** ERROR ***  *** ERROR ***  Tolvex has detected a critical error.";

/// A label and the member whose value follows it.
struct DetailRow {
  std::u16string_view label;
  std::u16string_view member;
};

constexpr DetailRow kScriptErrorRows[] = {
    {u"*** Microsoft Error Code    *** = ", u"Number"},
    {u"*** Microsoft Error Source  *** = ", u"source"},
    {u"*** Microsoft Error Message *** = ", u"Description"},
};

constexpr DetailRow kParserErrorRows[] = {
    {u"*** XML Parser Error URL      *** = ", u"url"},
    {u"*** XML Parser Error Line     *** = ", u"Line"},
    {u"*** XML Parser Error Position *** = ", u"linepos"},
    {u"*** XML Parser Error Code     *** = ", u"errorCode"},
    {u"*** XML Parser Error Reason   *** = ", u"reason"},
    {u"*** XML Parser Error Source   *** = ", u"srcText"},
};

void raiseToOne(Ref<std::int16_t>& repeat) {
  if (repeat < 1) repeat = 1;
}

/// As a script compares it: Null is not different from anything.
bool isFailureCode(const Variant& code) { return code.vt != VT_NULL && doubleOf(code) != 0; }

}  // namespace

std::u16string Logging::criticalBanners(std::int16_t level, std::int16_t repeat) {
  std::u16string result;
  for (std::int16_t i = 0; repeat > 1 && i < repeat; ++i) result += write(level, kCriticalBanner);
  return result;
}

std::u16string Logging::markedError(std::int16_t level, const VariantRef& text) {
  return write(level, std::u16string(kMarker) + joinedTextOf(text.value()));
}

std::u16string Logging::markedErrorIfAny(std::int16_t level, const VariantRef& text) {
  return joinedTextOf(text.value()).empty() ? std::u16string() : markedError(level, text);
}

std::u16string Logging::errorDetails(std::int16_t level, const ErrorMember& member) {
  std::u16string result;
  for (const DetailRow& row : kScriptErrorRows)
    result += write(level, std::u16string(row.label) + joinedTextOf(member(row.member)));
  return result;
}

std::u16string Logging::writeError(Ref<std::int16_t> level, DefaultedRef& text,
                                   Ref<std::int16_t> repeat) {
  clearError();
  raiseToOne(repeat);
  if (!passes(level)) return {};
  std::u16string result;
  for (std::int16_t i = 0; i < repeat; ++i) result += markedError(level, text);
  return result + criticalBanners(level, repeat);
}

std::u16string Logging::logMsError(Ref<std::int16_t> level, const Object& error, DefaultedRef& text,
                                   Ref<std::int16_t> repeat) {
  clearError();
  raiseToOne(repeat);
  if (!passes(level)) return {};
  std::u16string result = criticalBanners(level, repeat);
  result += markedError(level, text);  // the marker alone when there is no text
  result += errorDetails(level, [&](std::u16string_view name) { return error.get(name); });
  result += markedErrorIfAny(level, text);  // again, after the details
  clearError();
  return result;
}

std::u16string Logging::logXmlError(Ref<std::int16_t> level, const Object& document,
                                    DefaultedRef& text, Ref<std::int16_t> repeat) {
  clearError();
  raiseToOne(repeat);
  // The code is read even when the level filters the entry out.
  const Object error = Object::from(document.get(u"parseError"));
  const bool failed = isFailureCode(error.get(u"errorCode"));
  clearError();
  if (!passes(level) || !failed) return {};
  std::u16string result = criticalBanners(level, repeat);
  result += markedErrorIfAny(level, text);
  for (const DetailRow& row : kParserErrorRows)
    result += write(level, std::u16string(row.label) + joinedTextOf(error.get(row.member)));
  return result;
}

std::u16string Logging::catchError(const Object& error, DefaultedRef& text,
                                   Ref<std::int16_t> repeat) {
  raiseToOne(repeat);
  if (pendingError() == 0) return {};  // the library's own, whatever the object tells
  return caught([&](std::u16string_view name) { return error.get(name); }, text, repeat);
}

std::u16string Logging::caught(const ErrorMember& member, const VariantRef& text,
                               std::int16_t repeat) {
  std::u16string result = criticalBanners(kLow, repeat);
  result += markedErrorIfAny(kLow, text);
  return result + errorDetails(kLow, member);
}

}  // namespace quendal
