// A dictionary as rows of a log, nested ones indented.
#include <algorithm>
#include <limits>
#include <vector>

#include "core/compare.h"
#include "core/dictionary.h"
#include "platform/stack.h"
#include "system/reports.h"

namespace quendal::system {
namespace {

/// What writing an entry takes, with the page's code that may run for its key, and some to spare.
constexpr std::size_t kStackOfLevel = 65'536;

/// Keys and items: the platform's dictionary through its function table, any other object by name.
class Entries {
 public:
  explicit Entries(const Object& object) : object_(object), dictionary_(Dictionary::from(object)) {}

  [[nodiscard]] Variant keys() const {
    return dictionary_ ? dictionary_->keys() : object_.get(u"Keys");
  }
  [[nodiscard]] Variant item(const Variant& key) const {
    return dictionary_ ? dictionary_->item(key) : object_.get(u"Item", key);
  }

 private:
  Object object_;
  std::optional<Dictionary> dictionary_;
};

/// The way from the outermost dictionary to the one being reported.
class DictionaryReport {
 public:
  explicit DictionaryReport(ReportWriter& report) noexcept : report_(report) {}

  std::int32_t write(const Object& dictionary, std::int32_t level) {
    enter(dictionary);
    const std::int16_t indent = indentOf(level);
    const Entries entries(dictionary);
    std::int32_t status = 0;
    forEach(entries.keys(), [&](const Variant& key) {
      const Variant item = entries.item(key);
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

  static std::int16_t indentOf(std::int32_t level) {
    const std::int64_t indent = std::int64_t{level} * ReportWriter::kIndent;
    using Limits = std::numeric_limits<std::int16_t>;
    if (indent < Limits::min() || indent > Limits::max())
      throw AutomationError(error_number::kOverflow);
    return static_cast<std::int16_t>(indent);
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
