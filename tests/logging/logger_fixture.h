// A logger that writes into a folder of its own, and its log as text for comparison.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/dispatch.h"
#include "logging/logging.h"
#include "support/script_object.h"
#include "tests/platform/temp_folder.h"

namespace quendal::test {

inline constexpr std::int16_t kLow = 2;
inline constexpr std::int16_t kMedium = 3;  // filtered out by default

/// What a page host hands to the objects of a page.
struct PageContext {
  std::vector<std::pair<std::u16string, Variant>> serverVariables;
  /// Runs at the end of each enumeration of the server variables.
  std::function<void()> atEnd = [] {};
  /// How often each server variable was read, in the order of `serverVariables`.
  std::vector<int> reads;

  /// The scripting context; this must outlive it.
  [[nodiscard]] Object object(const std::u16string& folder);
};

/// A host's variable as it passes it by reference; it must outlive the call.
[[nodiscard]] Variant referenceTo(Variant& variable);

class LoggerTest : public ::testing::Test {
 protected:
  LoggerTest();
  ~LoggerTest() override;

  /// Starts a page in the test's folder; its log is in "LOGS" there.
  void startPage(PageContext& page);

  /// What was written since the last look, without the banner of a new file: whole lines, joined
  /// and ended by a line feed, stamps masked.
  [[nodiscard]] std::string written();
  /// A text that a member returned; line ends as they are.
  [[nodiscard]] static std::string masked(std::u16string text);
  [[nodiscard]] static std::string masked(const Variant& text) { return masked(textOf(text)); }

  /// The same with line feeds for line ends.
  [[nodiscard]] static std::string maskedLines(const Variant& text);

  /// Without line ends, as members hand back several entries.
  [[nodiscard]] static std::string runTogether(std::string lines);

  /// Calls a member and gives its masked text, or "error N".
  template <class... Values>
  [[nodiscard]] std::string call(std::u16string_view member, Values&&... arguments) {
    return textOrError(
        [&] { return masked(log.call(member, std::forward<Values>(arguments)...)); });
  }
  template <class Body>
  [[nodiscard]] static std::string textOrError(Body&& body) {
    try {
      return body();
    } catch (const AutomationError& error) {
      return "error " + std::to_string(error.number());
    }
  }

  platform::TempFolder folder;
  Owned<Logging> logger = Owned<Logging>::make();
  Object log = logger.object();

 private:
  void createLog(std::u16string_view path);

  std::u16string path_;
  std::size_t seen_ = 0;  // bytes
};

}  // namespace quendal::test
