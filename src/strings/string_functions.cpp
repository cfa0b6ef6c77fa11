#include "strings/string_functions.h"

#include <cmath>
#include <optional>

#include "automation/date_text.h"
#include "core/apartment.h"
#include "core/compare.h"
#include "platform/code_page.h"
#include "platform/identities.h"
#include "strings/date_format.h"
#include "strings/encoders.h"
#include "strings/md5.h"
#include "strings/number_words.h"
#include "strings/text_functions.h"

namespace quendal {
namespace {

constexpr std::u16string_view kInvalidFormat = u"### FormatDateTime: Invalid Format ###";

// The text form of an argument, as textOf gives it; text itself is only borrowed.
class ArgumentText {
 public:
  explicit ArgumentText(const VARIANT& argument) {
    const VARIANT value = follow(argument);
    if (value.vt == VT_BSTR) {
      view_ = viewOf(value.bstrVal);
    } else {
      view_ = converted_ = textOf(value);
    }
  }
  ArgumentText(const ArgumentText&) = delete;
  ArgumentText& operator=(const ArgumentText&) = delete;
  operator std::u16string_view() const noexcept { return view_; }

 private:
  std::u16string converted_;
  std::u16string_view view_;
};

// What `make` gives; Empty when it fails, with the error pending.
template <class Make>
Variant emptyOnError(Make&& make) {
  Variant result;
  ignoringErrors([&] { result = Variant(make()); });
  return result;
}

double dateOfText(std::u16string_view text) {
  double date = 0;
  if (!automation::parseDate(text, date)) throw AutomationError(error_number::kTypeMismatch);
  return date;
}

// Whatever is neither a date nor text, numbers included, counts as day 0; deliberate.
double dateToFormat(const VARIANT& value) {
  if (value.vt == VT_DATE) return value.date;
  return value.vt == VT_BSTR ? dateOfText(viewOf(value.bstrVal)) : 0;
}

// Whether a value's text names a date of which `holds` is true; false for other texts.
template <class Test>
Boolean isDateText(const VARIANT& value, Test holds) {
  bool result = false;
  ignoringErrors([&] { result = holds(dateOfText(ArgumentText(value))); });
  return booleanOf(result);
}

// Conversions in which "." is the decimal point, whatever the server's settings are.
Variant plainlyConverted(const VARIANT& value, VARTYPE type) {
  constexpr LCID kInvariant = 0x7F;
  VARIANT source = value;  // borrowed
  Variant result;
  check(VariantChangeTypeEx(&result, &source, kInvariant, 0, type));
  return result;
}

std::u16string plainNumberText(const VARIANT& value) {
  const bool hasPoint =
      value.vt == VT_R8 || value.vt == VT_R4 || value.vt == VT_CY || value.vt == VT_DECIMAL;
  if (!hasPoint) return textOf(value);
  return textOf(plainlyConverted(value, VT_BSTR));
}

enum class Side { Left, Right };

// Where no fill can be made, the text alone.
Variant padded(Side side, const VARIANT& text, const VARIANT& fill, const VARIANT& length) {
  return emptyOnError([&] {
    std::u16string result = textOf(text);
    ignoringErrors([&] {
      const std::u16string fillText = textOf(fill);
      const std::size_t count = strings::fillCount(doubleOf(length), result.size());
      result.insert(side == Side::Left ? 0 : result.size(), count,
                    fillText.empty() ? u' ' : fillText.front());
    });
    return result;
  });
}

}  // namespace

Variant StringFunctions::formatDateTime(VariantRef& date, VariantRef& format) {
  clearError();
  Variant result;
  const bool formatted = ignoringErrors([&] {
    if (format.value().vt != VT_BSTR) format.set(Variant(textOf(format.value())));
    const auto moment = momentOf(dateToFormat(date.value()));
    if (!moment) throw AutomationError(error_number::kInvalidCall);
    result = Variant(strings::formatMoment(*moment, ArgumentText(format.value())));
  });
  if (formatted) return result;
  clearError();
  return kInvalidFormat;
}

Variant StringFunctions::numberToWords(const VARIANT& number) {
  return emptyOnError([&] {
    const Variant value = plainValueOf(number);
    std::u16string text = plainNumberText(value);
    // Some systems make an integer of what is no number.
    const std::optional<NumberKey> key = numberOf(value);
    if (key && std::isnan(key->value)) return text;
    if (!ignoringErrors([&] { (void)int32Of(value); })) return text;
    const std::u16string spellable = strings::spellable(text);
    bool isZero = false;
    ignoringErrors([&] { isZero = plainlyConverted(Variant(spellable), VT_I4).lVal == 0; });
    return isZero ? std::u16string(u"zero") : strings::spell(spellable);
  });
}

Variant StringFunctions::htmlEncode(const VARIANT& text) {
  return emptyOnError([&] { return strings::htmlEncode(ArgumentText(text)); });
}

Variant StringFunctions::urlEncode(VariantRef& text) {
  return strings::urlEncode(ArgumentText(text.value()));
}

Variant StringFunctions::urlDecode(VariantRef& text) {
  const auto decoded = strings::urlDecode(ArgumentText(text.value()));
  if (!decoded) throw AutomationError(error_number::kTypeMismatch);
  return *decoded;
}

Variant StringFunctions::safeSqlString(const VARIANT& text) {
  return emptyOnError([&] { return strings::safeSqlString(ArgumentText(text)); });
}

Variant StringFunctions::safeFileName(const VARIANT& text) {
  // The steps after a failed one work on what there is: no text.
  std::u16string name;
  ignoringErrors([&] { name = strings::safeFileName(ArgumentText(text)); });
  return name;
}

Variant StringFunctions::md5(VariantRef& text) {
  return strings::hexText(strings::md5(platform::toCodePage(ArgumentText(text.value()))));
}

Variant StringFunctions::uuid() {
  const std::u16string identifier = platform::newIdentifier();
  if (identifier.empty()) throw AutomationError(error_number::kCannotCreate);
  return identifier;
}

Boolean StringFunctions::isTimeOnly(VariantRef& value) {
  return isDateText(value.value(), [](double date) { return std::trunc(date) == 0; });
}

Boolean StringFunctions::isDateOnly(VariantRef& value) {
  return isDateText(value.value(), [](double date) { return std::trunc(date) == date; });
}

Variant StringFunctions::capitalize(const VARIANT& sentence) {
  return emptyOnError([&] { return strings::capitalize(ArgumentText(sentence)); });
}

Variant StringFunctions::padLeft(const VARIANT& text, const VARIANT& fill, const VARIANT& length) {
  return padded(Side::Left, text, fill, length);
}

Variant StringFunctions::padRight(const VARIANT& text, const VARIANT& fill, const VARIANT& length) {
  return padded(Side::Right, text, fill, length);
}

Variant StringFunctions::extractFileName(const VARIANT& path) {
  return emptyOnError([&] { return std::u16string(strings::fileNameOf(ArgumentText(path))); });
}

Variant StringFunctions::extractFilePath(const VARIANT& path) {
  return emptyOnError([&] { return std::u16string(strings::filePathOf(ArgumentText(path))); });
}

Variant StringFunctions::formatFileSize(const VARIANT& size, const VARIANT& alsoShowBytes) {
  return emptyOnError([&] {
    const double bytes = doubleOf(size);
    if (!std::isfinite(bytes)) throw AutomationError(error_number::kOverflow);
    std::u16string text = strings::fileSizeText(bytes);
    ignoringErrors([&] {
      const bool showsBytes = converted(alsoShowBytes, VT_BOOL).boolVal != VARIANT_FALSE;
      if (showsBytes) text += u" (" + strings::bytesText(bytes) + u")";
    });
    return text;
  });
}

Variant StringFunctions::appendToUtf8File(const VARIANT& file, const VARIANT& text) {
  bool appended = false;
  ignoringErrors(
      [&] { appended = strings::appendToUtf8File(ArgumentText(file), ArgumentText(text)); });
  clearError();
  return booleanOf(appended);
}

}  // namespace quendal
