// Writers that share one log file and roll it over, all at once.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "tests/platform/temp_folder.h"

namespace quendal::platform {

struct LogRace {
  std::u16string folder;
  int entries = 0;  // of each writer

  static constexpr std::int64_t kRollOverSize = 4000;
  static constexpr std::string_view kHead = "\xFF\xFEhead\n";

  /// One writer, named by a letter. Returns the first error that it cannot explain.
  FileError write(char writer) const {
    const std::u16string log = folder + u"\\LOG.TXT";
    for (int i = 0; i < entries; ++i) {
      if (lookAt(log).size >= kRollOverSize) {
        const std::u16string archive = folder + u"\\" + newIdentifier();
        const FileError error = renameFile(log, archive);
        if (error != FileError::None && error != FileError::NotFound) return error;
      }
      const std::string entry =
          std::string(kHead) + writer + std::string(static_cast<std::size_t>(i % 60), '.') + '\n';
      FileError error;
      while ((error = appendToFile(log, bytesOf(entry), kHead.size())) == FileError::NotFound) {
        error = createFile(log, bytesOf(kHead));
        if (error != FileError::None && error != FileError::AlreadyExists) return error;
      }
      if (error != FileError::None) return error;
    }
    return FileError::None;
  }

  /// Every file begins with its head, and every entry of every writer is there, whole and once.
  void expectAll(std::string_view writers) const {
    std::map<std::string, int> count;
    for (const std::u16string& name : listFiles(folder)) {
      std::string content = contentOf(folder + u"\\" + name);
      ASSERT_EQ(content.substr(0, kHead.size()), kHead);
      for (std::size_t at = kHead.size(); at < content.size();) {
        const std::size_t end = content.find('\n', at);
        ASSERT_NE(end, content.npos);
        ++count[content.substr(at, end - at)];
        at = end + 1;
      }
    }
    EXPECT_GT(listFiles(folder).size(), 2u);
    EXPECT_EQ(count.size(), writers.size() * 60);
    for (const char writer : writers) {
      for (int dots = 0; dots < 60; ++dots) {
        const int expected = entries / 60 + (dots < entries % 60 ? 1 : 0);
        EXPECT_EQ(count[std::string(1, writer) + std::string(dots, '.')], expected);
      }
    }
  }
};

}  // namespace quendal::platform
