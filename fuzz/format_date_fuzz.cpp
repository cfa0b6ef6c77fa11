// Formats by arbitrary formats, and reads arbitrary text as a date, by the way that a call takes.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "base/date.h"
#include "strings/date_format.h"
#include "strings/string_functions.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quendal;
  double date = 0;
  if (size < sizeof(date)) return 0;
  std::memcpy(&date, data, sizeof(date));
  const std::u16string text(data + sizeof(date), data + size);
  if (const auto moment = momentOf(date)) {
    // Without "#" nothing changes, and no token gives more than an upper-case "Wednesday".
    const std::u16string result = strings::formatMoment(*moment, text);
    if (text.find(u'#') == text.npos ? result != text : result.size() > 9 * text.size())
      std::abort();
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
