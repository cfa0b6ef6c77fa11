// The start and the end of a page's run.
#include "base/text.h"
#include "core/apartment.h"
#include "logging/line_prefix.h"
#include "logging/logging.h"

namespace quendal {
namespace {

constexpr std::u16string_view kStartBanner =
    u"*** START OF RUN *** *** START OF RUN *** *** START OF RUN *** *** START OF RUN *** "
    u"*** START OF RUN ***";
constexpr std::u16string_view kEndBanner =
    u"*** END OF RUN *** *** END OF RUN *** *** END OF RUN *** *** END OF RUN *** "
    u"*** END OF RUN ***";

}  // namespace

std::u16string Logging::writeAspStart() {
  file_.ensure();  // the file is there even when the level writes nothing
  std::u16string result = write(kLow, kStartBanner);
  if (apartment().page.request) {
    const std::u16string method = serverVariable(u"REQUEST_METHOD");
    writeRow(u"HTTP_USER_AGENT", serverVariable(u"HTTP_USER_AGENT"));
    writeRow(method, serverVariable(u"URL"));
    if (equalNoCase(method, u"GET") && !serverVariable(u"QUERY_STRING").empty())
      writeRow(u"QUERY_STRING", serverVariable(u"QUERY_STRING"));
  }
  write(kLow, u"");
  return result;
}

std::u16string Logging::writeAspEnd() {
  file_.ensure();
  write(kLow, u"");
  std::u16string result = write(kLow, kEndBanner);
  write(kLow, u"");
  return result;
}

}  // namespace quendal
