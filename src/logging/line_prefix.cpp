#include "logging/line_prefix.h"

#include "base/text.h"
#include "core/apartment.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/identities.h"
#include "platform/locale.h"

namespace quendal {
namespace {

std::u16string logStamp() {
  std::u16string stamp;
  ignoringErrors([&stamp] {
    // Milliseconds and seconds are two readings of two clocks; deliberate.
    const int milliseconds = platform::utcMilliseconds();
    stamp = platform::formatDate(platform::localNow(), u"dd MMM yyyy HH:nn:ss");
    stamp += u'.' + decimalText(milliseconds, 3);
    stamp += u' ' + platform::computerName();
    stamp += u' ' + platform::userName();
    stamp += u' ' + decimalText(platform::processId());
  });
  return stamp;
}

/// The part after the last "\" in upper case, if there is such a file; otherwise nothing.
std::u16string pageFileName(std::u16string_view path) {
  if (!platform::fileExists(path)) return {};
  return platform::upperCase(path.substr(path.rfind(u'\\') + 1));
}

}  // namespace

std::u16string serverVariable(std::u16string_view name) {
  const Object request = apartment().page.request;  // the page may end while it is asked
  return joinedTextOf(request.get(u"ServerVariables", name));
}

std::u16string buildLinePrefix(bool inPage, std::u16string_view storedAddress) {
  std::u16string prefix = logStamp() + u' ';
  if (apartment().page.request)
    prefix += serverVariable(u"REMOTE_ADDR");
  else
    prefix += storedAddress;
  prefix += u' ';
  // The blank stays with the name, and the file system ignores it in the look-up.
  if (inPage) prefix += pageFileName(serverVariable(u"PATH_TRANSLATED") + u" ");
  return prefix;
}

}  // namespace quendal
