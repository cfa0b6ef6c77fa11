// The named values of a request, and the collections in which a page finds them.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "page_object.h"

namespace quendal::host {

/// A name with its values, in the order in which they came.
struct Field {
  std::u16string name;
  std::vector<std::u16string> values;

  /// The values with ", " between them.
  [[nodiscard]] std::u16string joined() const;
};
using Fields = std::vector<Field>;

/// Null when there is no field of the name, in any case.
[[nodiscard]] const Field* find(const Fields& fields, std::u16string_view name) noexcept;

/// Adds a value to the field of a name.
void add(Fields& fields, std::u16string_view name, std::u16string value);

using Decode = std::function<std::u16string(std::string_view bytes)>;

/// Fields of "a=1&b=x+y" or, with ';' and a cookie header, "a=1; b=2".
[[nodiscard]] Fields parseFields(std::string_view encoded, char separator, const Decode& decode);

/// A collection: items by name in any case and by position from 1; a missing name gives Empty.
/// Without arguments it is `whole`; For Each visits the names.
struct CollectionParts {
  Fields fields;
  std::u16string whole;
  std::function<Variant(const Field&)> item;
};
[[nodiscard]] Object makeCollection(const StopFlag& stop, CollectionParts parts);

/// The values of one field: joined when used as text, one by one by position.
[[nodiscard]] Object makeValueList(const StopFlag& stop, const Field& field);

/// A key of a collection that is a number, not a name.
[[nodiscard]] bool isPosition(const VARIANT& key) noexcept;

/// The element at a position from 1. Raises 9 when there is none.
template <class List>
const auto& elementAt(const List& list, const VARIANT& position) {
  const auto index = static_cast<std::size_t>(int32Of(position)) - 1;
  if (index >= list.size()) throw AutomationError(error_number::kSubscript);
  return list[index];
}

template <class List>
Variant countOf(const List& list) {
  return static_cast<std::int32_t>(list.size());
}

}  // namespace quendal::host
