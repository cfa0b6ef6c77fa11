// The log file: its folder, its first text, its roll-over into dated archives, and appending.
// It knows nothing of levels or stamps.
//
// A file is opened, appended to with one write and closed for each entry, so that several
// processes can write to one log. Archives, with the names of a page:
//
//   LOG.TXT_15_NOV_2026.TXT        the day's first
//   LOG.TXT_15_NOV_2026_1_1.TXT    the next; the counter is written twice, which is deliberate
//   LOG.TXT_15_NOV_2026_2_2.TXT    and so on
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "platform/files.h"

namespace quendal {

/// Creates every missing folder of a path; there is none in the empty one. Raises for a folder that
/// cannot be: 52 (also a network path without a share), 57, 58 (a file of that name), 61, 70 or 76.
void ensureFolders(std::u16string_view path);

class LogFile {
 public:
  enum class Format { Utf16, CodePage };
  /// Gives the first text of a new file.
  using Banner = std::function<std::u16string()>;

  explicit LogFile(Banner banner) : banner_(std::move(banner)) {}

  /// Folder and name are joined with nothing between them to the full name, unless `fullName`
  /// says otherwise. Nothing is touched yet.
  void setFolder(std::u16string folder);
  void setName(std::u16string name);
  void setFullName(std::u16string fullName);

  [[nodiscard]] const std::u16string& folder() const noexcept { return folder_; }
  [[nodiscard]] const std::u16string& name() const noexcept { return name_; }

  void setFormat(Format format) noexcept { format_ = format; }
  [[nodiscard]] Format format() const noexcept { return format_; }

  /// Size in bytes at which the file is rolled over; 0 or less: never.
  void setRolloverBytes(std::int32_t bytes) noexcept { rolloverBytes_ = bytes; }
  [[nodiscard]] std::int32_t rolloverBytes() const noexcept { return rolloverBytes_; }

  /// The next file that this object creates gets the banner, as the first one did.
  void expectBanner() noexcept { bannerWritten_ = false; }

  /// Makes sure that the file exists, creating missing folders and writing the banner (once for
  /// each object) into a file it creates, and rolls an existing file over when it is due. Raises
  /// what the page's file-system object would: 52, 53, 57, 58, 61, 67, 70, 75 or 76.
  void ensure();

  /// A file that is open for one entry, in the format that was set then.
  struct Opened {
    platform::AppendFile file;
    Format format;
  };
  /// `ensure` and `open`, with one look at a file that is there and not due. For one that another
  /// program holds exclusively it waits twice as long as an opening does.
  [[nodiscard]] Opened ensureOpen();
  /// Opens the existing file for one entry, so that what prevents that is raised before the entry
  /// is composed. Raises as `ensure`.
  [[nodiscard]] Opened open() const;
  /// Appends a text and a line end in one write. Raises as `ensure`; then nothing was written.
  static void append(Opened opened, std::u16string_view text);

 private:
  [[nodiscard]] bool isDue(std::int64_t size) const noexcept {
    return rolloverBytes_ > 0 && size >= rolloverBytes_;
  }
  void create();
  void rollOver();
  [[nodiscard]] std::u16string archiveName() const;

  Banner banner_;
  std::u16string folder_;
  std::u16string name_;
  std::u16string fullName_;
  bool isInFolder_ = false;  // a file of the full name tells that the folder is there
  Format format_ = Format::Utf16;
  std::int32_t rolloverBytes_ = 0;
  bool bannerWritten_ = false;
};

}  // namespace quendal
