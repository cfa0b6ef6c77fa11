// A dictionary as rows of a log, nested ones indented.
#include <limits>
#include <vector>

#include "core/dictionary.h"
#include "system/reports.h"

namespace quendal::system {
namespace {

constexpr std::size_t kDeepestNesting = 64;

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
  DictionaryReport(EntryWriter& log, std::u16string& text) noexcept : log_(log), text_(text) {}

  std::int32_t report(const Object& dictionary, std::int32_t level) {
    enter(dictionary);
    const std::int16_t indent = indentOf(level);
    const Entries entries(dictionary);
    std::int32_t status = 0;
    forEach(entries.keys(), [&](const Variant& key) {
      const Variant item = entries.item(key);
      if (item.vt != VT_DISPATCH && item.vt != VT_UNKNOWN) return add(key, item, indent);
      add(key, typeNameOf(item), indent);
      report(Object::from(item), level + 1);
      status = level + 1;
    });
    path_.pop_back();
    return status;
  }

 private:
  /// Raises 28 when a dictionary is inside itself, or nested deeper than anything a reader of a
  /// log could follow, as one that makes its items while it is asked can be.
  void enter(const Object& dictionary) {
    for (const IDispatch* outer : path_)
      if (outer == dictionary.dispatch()) throw AutomationError(error_number::kOutOfStack);
    if (path_.size() == kDeepestNesting) throw AutomationError(error_number::kOutOfStack);
    path_.push_back(dictionary.dispatch());
  }

  static std::int16_t indentOf(std::int32_t level) {
    const std::int64_t indent = std::int64_t{level} * EntryWriter::kReportIndent;
    using Limits = std::numeric_limits<std::int16_t>;
    if (indent < Limits::min() || indent > Limits::max())
      throw AutomationError(error_number::kOverflow);
    return static_cast<std::int16_t>(indent);
  }

  void add(const Variant& key, const Variant& value, std::int16_t indent) {
    const std::u16string entry = log_.writeParameter(key, value, indent);
    if (!entry.empty()) text_.append(entry).append(u"\r\n");
  }

  EntryWriter& log_;
  std::u16string& text_;
  std::vector<const IDispatch*> path_;  // outermost first
};

}  // namespace

std::int32_t reportDictionary(EntryWriter& log, const Object& dictionary, std::u16string_view title,
                              std::int32_t level, std::u16string& text) {
  if (level == 1) {
    const std::u16string entry = log.writeEntry(title);
    if (!entry.empty()) text.append(entry).append(u"\r\n");
  }
  return DictionaryReport(log, text).report(dictionary, level);
}

}  // namespace quendal::system
