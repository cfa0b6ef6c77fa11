#include "logging/logging.h"

#include <utility>

#include "base/text.h"
#include "core/apartment.h"
#include "core/dictionary.h"
#include "logging/line_prefix.h"
#include "platform/identities.h"
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
  logLevel_ = kLow;
  apartment().groupDepth = 0;
  file_.setRolloverBytes(kRolloverBytes);
  system::recordOSVersion();
}

void Logging::classTerminate() {
  osInfo_.reset();
  clearError();
}

void Logging::onStartPage(const Object& scriptingContext) {
  try {
    apartment().page.takeFrom(scriptingContext);
    inPage_ = true;
    const Object server = apartment().page.server;
    const std::u16string folder = textOf(server.call(u"MapPath", u".")) + u"\\LOGS\\";
    ensureFolders(folder);
    file_.setFolder(folder);
    file_.setName(u"LOG.TXT");
    file_.setFullName(folder + u"\\LOG.TXT");  // the doubled separator is deliberate
    remoteAddress_ = serverVariable(u"REMOTE_ADDR");
  } catch (...) {  // a page that did not start leaves nothing to the next logger on this thread
    onEndPage();
    throw;
  }
}

void Logging::onEndPage() {
  // The slots are empty before anything is released: an object that goes may lead back here.
  const PageObjects ended = std::exchange(apartment().page, {});
}

Boolean Logging::isAsp() { return booleanOf(inPage_); }

Boolean Logging::unicode() { return booleanOf(file_.format() == LogFile::Format::Utf16); }

void Logging::setUnicode(Ref<Boolean> value) {
  file_.setFormat(isTrue(value) ? LogFile::Format::Utf16 : LogFile::Format::CodePage);
}

std::int16_t Logging::logLevel() { return logLevel_; }

void Logging::setLogLevel(Ref<std::int16_t> level) { logLevel_ = level; }

std::int32_t Logging::rolloverBytes() { return file_.rolloverBytes(); }

void Logging::setRolloverBytes(Ref<std::int32_t> bytes) { file_.setRolloverBytes(bytes); }

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

Variant Logging::userName() { return platform::userName(); }

Variant Logging::computerName() { return platform::computerName(); }

Variant Logging::pid() { return platform::processId(); }

Variant Logging::threadId() { return platform::threadId(); }

Variant Logging::odbcDrivers() {
  const Dictionary drivers = Dictionary::create(Dictionary::Compare::Text);
  for (const std::u16string& name : system::queryODBCDrivers()) drivers.set(name, name);
  return drivers.object();
}

std::u16string Logging::linePrefix() const {
  clearError();
  return buildLinePrefix(inPage_, remoteAddress_);
}

std::u16string Logging::writeLog(Ref<std::int16_t> level, DefaultedRef& text,
                                 Ref<std::int16_t> repeat, DefaultedRef& stamp) {
  clearError();
  if (repeat < 1) repeat = 1;
  if (!passes(level)) return {};
  // The file comes first: a text that cannot be read leaves the log opened, but not written.
  LogFile::Opened opened = file_.ensureOpen();
  std::u16string result;
  std::u16string prefix;
  for (std::int16_t i = 0; i < repeat; ++i) {
    if (i > 0) result += kLineEnd;
    prefix = linePrefix();  // each repetition has its own time
    stamp.set(Variant(prefix));
    result.append(prefix).append(joinedTextOf(text.value()));
  }
  return append(std::move(opened), std::move(result), prefix);
}

std::u16string Logging::write(std::int16_t level, std::u16string_view text) {
  clearError();
  if (!passes(level)) return {};
  LogFile::Opened opened = file_.ensureOpen();
  const std::u16string prefix = linePrefix();
  return append(std::move(opened), prefix + std::u16string(text), prefix);
}

std::u16string Logging::append(LogFile::Opened opened, std::u16string entry,
                               std::u16string_view prefix) {
  // Also between repetitions, so that these begin with two prefixes; deliberate.
  if (entry.find(kLineEnd) != entry.npos)
    entry = replaceAll(entry, kLineEnd, std::u16string(kLineEnd).append(prefix));
  LogFile::append(std::move(opened), entry);
  clearError();
  return entry;
}

}  // namespace quendal
