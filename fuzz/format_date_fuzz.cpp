// Formats by arbitrary formats, and reads arbitrary text as a date, by the way that a call takes.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "base/date.h"
#include "base/text.h"
#include "strings/date_format.h"
#include "strings/string_functions.h"

namespace {

using namespace quendal;

// One token after the other over the whole text.
std::u16string replacedInOrder(const Moment& moment, std::u16string text) {
  constexpr const char16_t* kOrder[] = {
      u"UWWWW", u"UMMMM", u"AMPM", u"WWWW", u"MMMM", u"YYYY", u"UWWW", u"UMMM", u"HH24", u"HH12",
      u"LNTH",  u"UNTH",  u"NTH",  u"WWW",  u"MMM",  u"H24",  u"H12",  u"HH",   u"WW",   u"SS",
      u"NN",    u"YY",    u"MM",   u"DD",   u"W",    u"S",    u"N",    u"H",    u"M",    u"D"};
  const bool half = text.find(u"#AMPM") != std::u16string::npos;
  for (const char16_t* name : kOrder) {
    const std::u16string token = std::u16string(u"#") + name;
    std::u16string by = strings::formatMoment(moment, half ? token + u" #AMPM" : token);
    if (half) by.resize(by.size() - 3);
    text = replaceAll(text, token, by);
  }
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  double date = 0;
  if (size < sizeof(date)) return 0;
  std::memcpy(&date, data, sizeof(date));
  const std::u16string text(data + sizeof(date), data + size);
  if (const auto moment = momentOf(date)) {
    if (strings::formatMoment(*moment, text) != replacedInOrder(*moment, text)) std::abort();
  }

  // The first line is the date, the rest the format.
  const std::size_t line = text.find(u'\n');
  Variant dateText(text.substr(0, line));
  Variant format(line == std::u16string::npos ? u"#YYYY" : text.substr(line + 1));
  StringFunctions functions;
  VariantRef dateRef(&dateText), formatRef(&format);
  if (functions.formatDateTime(dateRef, formatRef).vt != VT_BSTR) std::abort();
  (void)functions.isTimeOnly(dateRef);
  (void)functions.isDateOnly(dateRef);
  return 0;
}
