#include "logging/log_file.h"

#include <quendal/error.h>

#include <algorithm>

#include "base/text.h"
#include "platform/clock.h"
#include "platform/code_page.h"
#include "platform/locale.h"
#include "platform/messages.h"

namespace quendal {
namespace {

using platform::FileError;

constexpr char16_t kByteOrderMark = 0xFEFF;

void raiseUnless(FileError error) {
  if (error != FileError::None) throw AutomationError(static_cast<int>(error));
}

}  // namespace

void ensureFolders(std::u16string_view path) {
  // No folder is asked for, or, as one look tells in the usual case, nothing is to be created.
  if (path.empty() || platform::lookAt(path).isFolder) return;

  const std::u16string absolute = platform::absolutePath(path);
  if (absolute.empty()) return raiseUnless(platform::createFolder(path));  // it knows why
  std::size_t end = absolute.find(u'\\');
  if (absolute.starts_with(u"\\\\")) {  // a network share is never created, only what is below it
    const std::size_t server = std::min(absolute.find(u'\\', 2), absolute.size() - 1);
    end = std::min(absolute.find(u'\\', server + 1), absolute.size());
    if (server == 2 || end == server + 1) raiseUnless(FileError::BadFileName);
  }
  while (end < absolute.size()) {
    end = std::min(absolute.find(u'\\', end + 1), absolute.size());
    const auto folder = std::u16string_view(absolute).substr(0, end);
    if (!platform::lookAt(folder).isFolder) raiseUnless(platform::createFolder(folder));
  }
}

void LogFile::setFolder(std::u16string folder) {
  folder_ = std::move(folder);
  setFullName(folder_ + name_);
}

void LogFile::setName(std::u16string name) {
  name_ = std::move(name);
  setFullName(folder_ + name_);
}

void LogFile::setFullName(std::u16string fullName) {
  constexpr std::u16string_view kSeparators = u"\\/";
  fullName_ = std::move(fullName);
  // The folder with its separator, perhaps one more, and a name without any.
  isInFolder_ = folder_.find_last_of(kSeparators) + 1 == folder_.size() &&
                fullName_.starts_with(folder_) &&
                fullName_.find_first_not_of(kSeparators, folder_.size()) - 1 ==
                    fullName_.find_last_of(kSeparators);
}

void LogFile::ensure() {
  ensureFolders(folder_);
  const platform::PathStatus status = platform::lookAt(fullName_);
  if (!status.exists)
    create();
  else if (status.isFolder)
    raiseUnless(FileError::PermissionDenied);
  else if (isDue(status.size))
    rollOver();
}

void LogFile::create() {
  const std::span mark(&kByteOrderMark, format_ == Format::Utf16 ? 1 : 0);
  const FileError error = platform::createFile(fullName_, std::as_bytes(mark));
  if (error == FileError::AlreadyExists) return;  // another writer was first; it is as good as ours
  raiseUnless(error);
  platform::pumpMessages();
  if (bannerWritten_) return;
  append(open(), banner_());
  bannerWritten_ = true;
}

void LogFile::rollOver() {
  // A rename never replaces a file: of two writers that roll over at once, one raises.
  raiseUnless(platform::renameFile(fullName_, archiveName()));
  ensure();
}

std::u16string LogFile::archiveName() const {
  const std::u16string date =
      u"_" + platform::upperCase(platform::formatDate(platform::localNow(), u"dd_MMM_yyyy"));
  // Only the file part is put in upper case: the folder is there already, under its own name.
  const std::size_t filePart = fullName_.find_last_of(u"\\/") + 1;
  std::u16string name =
      fullName_.substr(0, filePart) + platform::upperCase(fullName_.substr(filePart)) + date;
  name += u".TXT";
  for (std::int32_t n = 1; platform::fileExists(name); ++n) {
    const std::u16string count = u"_" + decimalText(n);
    name = folder_ + u"\\" + name_ + date + count + count + u".TXT";
  }
  return name;
}

LogFile::Opened LogFile::ensureOpen() {
  if (isInFolder_) {
    platform::AppendFile file(fullName_);
    if (file.error() == FileError::None && !isDue(file.size())) return {std::move(file), format_};
  }
  ensure();
  return open();
}

LogFile::Opened LogFile::open() const {
  Opened opened{platform::AppendFile(fullName_), format_};
  raiseUnless(opened.file.error());
  return opened;
}

void LogFile::append(Opened opened, std::u16string_view text) {
  const bool isUtf16 = opened.format == Format::Utf16;
  std::u16string line;
  line.reserve(1 + text.size() + kLineEnd.size());
  if (isUtf16) line = kByteOrderMark;  // for a file whose creator has not come to it
  line.append(text).append(kLineEnd);
  if (isUtf16) {
    raiseUnless(opened.file.append(std::as_bytes(std::span(line)), sizeof kByteOrderMark));
  } else {
    const std::string bytes = platform::toSystemBytes(line);
    raiseUnless(opened.file.append(std::as_bytes(std::span(bytes))));
  }
}

}  // namespace quendal
