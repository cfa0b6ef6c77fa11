// Entries that record failures: marked lines, script errors and parser errors.
#include "core/apartment.h"
#include "logging/logging.h"

namespace quendal {
namespace {

constexpr auto kLow = static_cast<std::int16_t>(LogLevel::Low);

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

void raiseToOne(std::int16_t& repeat) noexcept {
  if (repeat < 1) repeat = 1;
}

/// As a script compares it: Null is not different from anything.
bool isFailureCode(const Variant& code) { return code.vt != VT_NULL && doubleOf(code) != 0; }

/// What the parser tells under a name. One that knows the member without having built it (some
/// have no URL) tells nothing; the rest of its report is worth having.
std::u16string parserText(const Object& error, std::u16string_view member) {
  try {
    return joinedTextOf(error.get(member));
  } catch (const AutomationError& failure) {
    if (failure.code() != E_NOTIMPL) throw;
    return {};
  }
}

}  // namespace

std::u16string Logging::writeTimes(std::int16_t level, std::u16string_view text,
                                   std::int16_t times) {
  std::u16string result;
  for (std::int16_t i = 0; i < times; ++i) result += write(level, text);
  return result;
}

std::u16string Logging::markedError(std::int16_t level, std::u16string_view text,
                                    std::int16_t repeat) {
  std::u16string result = writeTimes(level, std::u16string(kMarker).append(text), repeat);
  if (repeat > 1) result += writeTimes(level, kCriticalBanner, repeat);
  return result;
}

std::u16string Logging::errorDetails(std::int16_t level, const ErrorMember& member) {
  std::u16string result;
  for (const DetailRow& row : kScriptErrorRows)
    result += write(level, std::u16string(row.label) + joinedTextOf(member(row.member)));
  return result;
}

std::u16string Logging::writeError(std::int16_t& level, DefaultedRef& text, std::int16_t& repeat) {
  clearError();
  raiseToOne(repeat);
  if (!passes(level)) return {};
  return finished(markedError(level, joinedTextOf(text.value()), repeat));
}

std::u16string Logging::logMsError(std::int16_t& level, const Object& error, DefaultedRef& text,
                                   std::int16_t& repeat) {
  clearError();
  raiseToOne(repeat);
  if (!passes(level)) return {};
  const std::u16string message = joinedTextOf(text.value());
  std::u16string result;
  if (repeat > 1) result = writeTimes(level, kCriticalBanner, repeat);
  result += markedError(level, message, 1);  // the marker alone when there is no text
  result += errorDetails(level, [&](std::u16string_view name) { return error.get(name); });
  if (!message.empty()) result += markedError(level, message, 1);  // again, after the details
  return finished(std::move(result));
}

std::u16string Logging::logXmlError(std::int16_t& level, const Object& document, DefaultedRef& text,
                                    std::int16_t& repeat) {
  clearError();
  raiseToOne(repeat);
  // The code is read even when the level filters the entry out.
  const Object error = Object::from(document.get(u"parseError"));
  const bool failed = isFailureCode(error.get(u"errorCode"));
  if (!passes(level) || !failed) return finished({});
  const std::u16string message = joinedTextOf(text.value());
  std::u16string result;
  if (repeat > 1) result = writeTimes(level, kCriticalBanner, repeat);
  if (!message.empty()) result += markedError(level, message, 1);
  for (const DetailRow& row : kParserErrorRows)
    result += write(level, std::u16string(row.label) + parserText(error, row.member));
  return finished(std::move(result));
}

std::u16string Logging::catchError(const Object& error, DefaultedRef& text, std::int16_t& repeat) {
  raiseToOne(repeat);
  if (pendingError() == 0) return {};  // the library's own, whatever the object tells
  return caught([&](std::u16string_view name) { return error.get(name); },
                joinedTextOf(text.value()), repeat);
}

std::u16string Logging::caught(const ErrorMember& member, std::u16string_view text,
                               std::int16_t repeat) {
  std::u16string result;
  if (repeat > 1) result = writeTimes(kLow, kCriticalBanner, repeat);
  if (!text.empty()) result += markedError(kLow, text, 1);
  result += errorDetails(kLow, member);
  return result;
}

}  // namespace quendal
