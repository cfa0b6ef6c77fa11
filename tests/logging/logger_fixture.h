// A logger that writes into a folder of its own, and its log as text for comparison.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/dispatch.h"
#include "logging/logging.h"
#include "support/script_object.h"
#include "tests/core/raw_call.h"
#include "tests/platform/temp_folder.h"
#include "tests/support/outcome.h"

namespace quendal::test {

inline constexpr std::int16_t kLow = 2;
inline constexpr std::int16_t kMedium = 3;  // filtered out by default

/// What a page host hands to the objects of a page.
struct PageContext {
  std::vector<std::pair<std::u16string, Variant>> serverVariables;
  std::function<void()> atEnd = [] {};      // of each enumeration of the server variables
  std::function<void()> whenAsked = [] {};  // whenever the request is
  /// The scripting context; this must outlive it.
  [[nodiscard]] Object object(const std::u16string& folder);
};

class LoggerTest : public ::testing::Test {
 protected:
  LoggerTest();
  ~LoggerTest() override;

  /// Starts a page in the test's folder; its log is in "LOGS" there.
  void startPage(PageContext& page);

  /// A text with line feeds as line ends, stamps as "@".
  [[nodiscard]] static std::string masked(const Variant& text);
  /// What was written since the last look, in the same way: whole lines.
  [[nodiscard]] std::string written();
  /// Without line ends, as members hand back several entries.
  [[nodiscard]] static std::string runTogether(std::string lines);

  /// Calls a member and gives its masked text, or "error N".
  template <class... Values>
  [[nodiscard]] std::string call(std::u16string_view member, Values&&... arguments) {
    return textOrError(
        [&] { return masked(log.call(member, std::forward<Values>(arguments)...)); });
  }
  /// Calls a member and gives what it wrote, which is also what it returned but for line ends; an
  /// error as a line of its own at the end.
  template <class... Values>
  [[nodiscard]] std::string lines(std::u16string_view member, Values&&... arguments) {
    const std::string returned = call(member, std::forward<Values>(arguments)...);
    const std::string log = written();
    if (returned.starts_with("error")) return log + returned;
    EXPECT_EQ(runTogether(returned), runTogether(log));
    return log;
  }

  platform::TempFolder folder;
  Owned<Logging> logger = Owned<Logging>::make();
  Object log = logger.object();

 private:
  void createLog(std::u16string_view path);  // without the banner of a new file

  std::u16string path_;
  std::size_t seen_ = 0;  // bytes
};

}  // namespace quendal::test
