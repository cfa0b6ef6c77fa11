// A dictionary as rows of a log, nested ones indented.
#include <algorithm>
#include <cstdint>
#include <vector>

#include "core/compare.h"
#include "platform/stack.h"
#include "system/reports.h"

namespace quendal::system {
namespace {

/// What writing an entry takes, with the page's code that may run for its key, and some to spare.
constexpr std::size_t kStackOfLevel = 65'536;

/// The way from the outermost dictionary to the one being reported.
class DictionaryReport {
 public:
  explicit DictionaryReport(ReportWriter& report) noexcept : report_(report) {}

  std::int32_t write(const Object& dictionary, std::int32_t level) {
    enter(dictionary);
    const std::int16_t indent =
        int16Of(Variant(static_cast<double>(level) * ReportWriter::kIndent));
    std::int32_t status = 0;
    forEach(dictionary.get(u"Keys"), [&](const Variant& key) {
      const Variant item = dictionary.get(u"Item", key);
      if (!isObject(item)) return report_.parameter(key, item, indent);
      report_.parameter(key, typeNameOf(item), indent);
      write(Object::from(item), level + 1);
      status = level + 1;
    });
    path_.pop_back();
    return status;
  }

 private:
  void enter(const Object& dictionary) {
    const bool isInsideItself = std::ranges::find(path_, dictionary.dispatch()) != path_.end();
    if (isInsideItself || platform::remainingStack() < kStackOfLevel)
      throw AutomationError(error_number::kOutOfStack);
    path_.push_back(dictionary.dispatch());
  }

  ReportWriter& report_;
  std::vector<const IDispatch*> path_;  // outermost first
};

}  // namespace

std::int32_t reportDictionary(ReportWriter& report, const Object& dictionary,
                              std::u16string_view title, std::int32_t level) {
  if (level == 1) report.entry(title);
  return DictionaryReport(report).write(dictionary, level);
}

}  // namespace quendal::system
