#include "logging/log_file.h"

#include <array>

#include "core/apartment.h"
#include "core/text_tools.h"
#include "platform/clock.h"
#include "platform/code_page.h"
#include "platform/files.h"
#include "platform/locale.h"
#include "platform/messages.h"

namespace quendal {
namespace {

using platform::FileError;

constexpr std::array kByteOrderMark = {std::byte{0xFF}, std::byte{0xFE}};

void raiseUnless(FileError error) {
  if (error != FileError::None) throw AutomationError(static_cast<int>(error));
}

/// Joins as the platform does: a separator only where there is none yet.
std::u16string joined(std::u16string path, std::u16string_view part) {
  if (!path.empty() && path.back() != u'\\') path += u'\\';
  return path.append(part);
}

}  // namespace

void ensureFolders(std::u16string_view path) {
  if (platform::lookAt(path).isFolder) return;  // one look is enough for the usual case

  const std::u16string absolute = platform::absolutePath(path);
  if (absolute.empty()) return;
  std::size_t start = 0;
  const auto nextPart = [&] {
    const std::size_t end = std::min(absolute.find(u'\\', start), absolute.size());
    std::u16string part = absolute.substr(start, end - start);
    start = end + 1;
    return part;
  };
  std::u16string current;
  if (absolute.starts_with(u"\\\\")) {  // a network share is never created, only what is below it
    start = 2;
    const std::u16string server = nextPart();
    current = u"\\\\" + server + u"\\" + nextPart() + u"\\";
  } else {
    current = nextPart() + u"\\";
  }
  while (start <= absolute.size()) {
    current = joined(std::move(current), nextPart());
    if (!platform::lookAt(current).isFolder) raiseUnless(platform::createFolder(current));
  }
}

void LogFile::setFolder(std::u16string folder) {
  folder_ = std::move(folder);
  fullName_ = folder_ + name_;
}

void LogFile::setName(std::u16string name) {
  name_ = std::move(name);
  fullName_ = folder_ + name_;
}

void LogFile::setFullName(std::u16string fullName) { fullName_ = std::move(fullName); }

void LogFile::ensure() {
  clearError();
  ensureFolders(folder_);
  const platform::PathStatus status = platform::lookAt(fullName_);
  if (!status.exists)
    create();
  else if (status.isFolder)
    raiseUnless(FileError::PermissionDenied);
  else if (rolloverBytes_ > 0 && status.size >= rolloverBytes_)
    rollOver();
}

void LogFile::create() {
  const std::span<const std::byte> head =
      format_ == Format::Utf16 ? kByteOrderMark : std::span<const std::byte>{};
  const FileError error = platform::createFile(fullName_, head);
  if (error == FileError::AlreadyExists) return;  // another writer was first; it is as good as ours
  raiseUnless(error);
  platform::pumpMessages();
  if (bannerWritten_) return;
  append(banner_());
  bannerWritten_ = true;
}

void LogFile::rollOver() {
  // A rename never replaces a file: of two writers that roll over at once, one raises.
  raiseUnless(platform::renameFile(fullName_, archiveName()));
  ensure();
}

std::u16string LogFile::archiveName() const {
  constexpr std::u16string_view kSuffix = u".TXT";
  const std::u16string date =
      platform::upperCase(platform::formatDate(platform::localNow(), u"dd_MMM_yyyy"));
  // Only the file part is put in upper case: the folder is there already, under its own name.
  const std::size_t filePart = fullName_.find_last_of(u"\\/") + 1;
  std::u16string first =
      fullName_.substr(0, filePart) + platform::upperCase(fullName_.substr(filePart)) + u"_" + date;
  first += kSuffix;
  if (!platform::fileExists(first)) return first;

  for (std::int32_t n = 1;; ++n) {
    const std::u16string count = decimalText(n);
    std::u16string next = folder_ + u"\\" + name_ + u"_" + date + u"_" + count + u"_" + count;
    next += kSuffix;
    if (!platform::fileExists(next)) return next;
  }
}

void LogFile::append(std::u16string text) const {
  text += kLineEnd;
  if (format_ == Format::Utf16) {
    raiseUnless(platform::appendToFile(fullName_, std::as_bytes(std::span(text))));
  } else {
    const std::string bytes = platform::toCodePage(text);
    raiseUnless(platform::appendToFile(fullName_, std::as_bytes(std::span(bytes))));
  }
}

}  // namespace quendal
