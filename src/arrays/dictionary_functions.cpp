#include "arrays/dictionary_functions.h"

#include <algorithm>
#include <vector>

#include "arrays/value_order.h"
#include "core/array_view.h"
#include "core/dictionary.h"

namespace quendal {
namespace {

// Moves an entry behind all others. It is the only one that is out of the dictionary meanwhile,
// and the room that it leaves is there for it to come back to.
void moveToEnd(const Dictionary& dictionary, const Variant& key) {
  if (!dictionary.contains(key)) return;  // an object took it out when asked for its value
  const Variant item = dictionary.item(key);
  dictionary.remove(key);
  try {
    dictionary.add(key, item);
  } catch (...) {
    dictionary.set(key, item);
    throw;
  }
}

std::vector<std::uint32_t> sortedPositions(const Variant& values, const SortOrder& order) {
  const ArrayView view(values);
  return orderOf(view, 0, view.size(), order);
}

}  // namespace

Variant DictionaryFunctions::sort(const Object& dictionary, Boolean sortByKey, Boolean descending,
                                  std::int32_t compareMode) {
  if (!dictionary) throw AutomationError(error_number::kObjectNotSet);
  const std::optional<Dictionary> entries = Dictionary::from(dictionary);
  if (!entries) throw AutomationError(error_number::kTypeMismatch);
  const auto mode = static_cast<CompareMode>(compareMode);
  if (mode != CompareMode::Binary && mode != CompareMode::Text)
    throw AutomationError(error_number::kInvalidCall);

  const Variant keys = entries->keys();
  const ArrayView view(keys);
  const std::vector<std::uint32_t> order =
      sortedPositions(isTrue(sortByKey) ? keys : entries->items(), {mode, isTrue(descending)});
  if (std::ranges::is_sorted(order)) return Variant(dictionary);
  for (const std::uint32_t position : order)
    moveToEnd(*entries, Variant::copyOf(view.at(position)));
  return Variant(dictionary);
}

}  // namespace quendal
