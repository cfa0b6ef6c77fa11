#include "logging/logging.h"

#include "core/apartment.h"
#include "core/dictionary.h"
#include "core/text_tools.h"
#include "logging/line_prefix.h"
#include "system/platform_block.h"
#include "system/queries.h"

namespace quendal {

Logging::Logging() : file_(&system::platformBanner) { classInitialize(); }

Logging::~Logging() { classTerminate(); }

void Logging::classInitialize() {
  constexpr std::int32_t kRolloverBytes = 5 * 1024 * 1024;
  osInfo_ = Owned<OsInfo>::make();
  inPage_ = false;
  file_.setFormat(LogFile::Format::Utf16);
  file_.expectBanner();
  logLevel_ = static_cast<std::int16_t>(LogLevel::Low);
  apartment().groupDepth = 0;
  file_.setRolloverBytes(kRolloverBytes);
  static_cast<void>(system::queryOSName());  // for the record it leaves in the apartment
}

void Logging::classTerminate() {
  osInfo_.reset();
  clearError();
}

void Logging::onStartPage(const Object& scriptingContext) {
  PageObjects& page = apartment().page;
  page.takeFrom(scriptingContext);
  inPage_ = true;
  const std::u16string folder = textOf(page.server.call(u"MapPath", u".")) + u"\\LOGS\\";
  ensureFolders(folder);
  file_.setFolder(folder);
  file_.setName(u"LOG.TXT");
  file_.setFullName(folder + u"\\LOG.TXT");  // the doubled separator is deliberate
  remoteAddress_ = serverVariable(u"REMOTE_ADDR");
}

void Logging::onEndPage() { apartment().page = {}; }

Boolean Logging::isAsp() { return booleanOf(inPage_); }

Boolean Logging::unicode() { return booleanOf(file_.format() == LogFile::Format::Utf16); }

void Logging::setUnicode(Boolean& value) {
  file_.setFormat(isTrue(value) ? LogFile::Format::Utf16 : LogFile::Format::CodePage);
}

std::int16_t Logging::logLevel() { return logLevel_; }

void Logging::setLogLevel(std::int16_t& level) { logLevel_ = level; }

std::int32_t Logging::rolloverBytes() { return file_.rolloverBytes(); }

void Logging::setRolloverBytes(std::int32_t& bytes) { file_.setRolloverBytes(bytes); }

Variant Logging::path() { return file_.folder(); }

Variant Logging::fileName() { return file_.name(); }

Variant Logging::remoteIp() { return remoteAddress_; }

Variant Logging::setLogPath(VariantRef& path) {
  std::u16string folder = textOf(path.value());
  ensureFolders(folder);
  file_.setFolder(std::move(folder));
  return {};
}

Variant Logging::setLogFile(VariantRef& file) {
  file_.setName(textOf(file.value()));
  return {};
}

Variant Logging::osInfo() { return osInfo_.object(); }

Variant Logging::userName() { return system::queryUserName(); }

Variant Logging::computerName() { return system::queryComputerName(); }

Variant Logging::pid() { return system::queryProcessId(); }

Variant Logging::threadId() { return system::queryThreadId(); }

Variant Logging::odbcDrivers() {
  const Dictionary drivers = Dictionary::create(Dictionary::Compare::Text);
  for (const std::u16string& name : system::queryODBCDrivers()) drivers.set(name, name);
  return drivers.object();
}

std::u16string Logging::linePrefix() const { return buildLinePrefix(inPage_, remoteAddress_); }

std::u16string Logging::writeLog(std::int16_t& level, DefaultedRef& text, std::int16_t& repeat,
                                 DefaultedRef& stamp) {
  clearError();
  if (repeat < 1) repeat = 1;
  if (!passes(level)) return {};
  // The file comes first: a text that cannot be read leaves the log opened, but not written.
  file_.ensure();
  std::u16string lastPrefix;
  std::u16string result = compose(joinedTextOf(text.value()), repeat, lastPrefix);
  stamp.set(Variant(lastPrefix));
  file_.append(result);
  return finished(std::move(result));
}

std::u16string Logging::write(std::int16_t level, std::u16string_view text) {
  clearError();
  if (!passes(level)) return {};
  file_.ensure();
  std::u16string lastPrefix;
  std::u16string result = compose(text, 1, lastPrefix);
  file_.append(result);
  return finished(std::move(result));
}

std::u16string Logging::finished(std::u16string entry) {
  clearError();
  return entry;
}

std::u16string Logging::compose(std::u16string_view text, std::int16_t repeat,
                                std::u16string& lastPrefix) const {
  std::u16string result;
  for (std::int16_t i = 0; i < repeat; ++i) {
    if (i > 0) result += kLineEnd;
    lastPrefix = linePrefix();  // each repetition has its own time
    result.append(lastPrefix).append(text);
  }
  if (result.find(kLineEnd) == std::u16string::npos) return result;
  // Also between repetitions, so that these begin with two prefixes; deliberate.
  return replaceAll(result, kLineEnd, std::u16string(kLineEnd) + lastPrefix);
}

}  // namespace quendal
