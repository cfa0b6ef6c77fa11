#include "logging/line_prefix.h"

#include "base/text.h"
#include "core/apartment.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/locale.h"
#include "system/queries.h"

namespace quendal {
namespace {

std::u16string stampDate() {
  // Milliseconds and seconds are two readings of two clocks; deliberate.
  const int milliseconds = platform::utcMilliseconds();
  std::u16string text = platform::formatDate(platform::localNow(), u"dd MMM yyyy HH:nn:ss");
  text += u'.';
  for (const int unit : {100, 10, 1})
    text += static_cast<char16_t>(u'0' + milliseconds / unit % 10);
  return text;
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

std::u16string buildLogStamp() {
  std::u16string stamp;
  ignoringErrors([&] {
    stamp = stampDate();
    const StampCache& cache = apartment().stampCache;
    if (!cache.machineName.empty()) {
      stamp += u" " + cache.machineName + u" " + cache.userName + u" " + cache.processId;
      return;
    }
    stamp.append(1, u' ').append(system::queryComputerName());
    stamp.append(1, u' ').append(system::queryUserName());
    stamp.append(1, u' ').append(decimalText(system::queryProcessId()));
  });
  return stamp;
}

std::u16string buildLinePrefix(bool inPage, std::u16string_view storedAddress) {
  clearError();
  std::u16string prefix = buildLogStamp();
  prefix += u' ';
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
