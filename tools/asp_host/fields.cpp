#include "fields.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "base/text.h"
#include "site_path.h"

namespace quendal::host {
std::u16string Field::joined() const {
  std::u16string text;
  for (const std::u16string& value : values)
    text.append(&value == &values[0] ? u"" : u", ").append(value);
  return text;
}

const Field* find(const Fields& fields, std::u16string_view name) noexcept {
  const auto found = std::ranges::find_if(
      fields, [&](const Field& field) { return equalNoCase(field.name, name); });
  return found == fields.end() ? nullptr : &*found;
}

void add(Fields& fields, std::u16string_view name, std::u16string value) {
  const Field* found = find(fields, name);
  Field& field = found != nullptr ? fields[static_cast<std::size_t>(found - fields.data())]
                                  : fields.emplace_back(Field{std::u16string(name), {}});
  field.values.push_back(std::move(value));
}

Fields parseFields(std::string_view encoded, char separator, const Decode& decode) {
  Fields fields;
  const auto text = [&](std::string_view part) { return decode(*percentDecoded(part, true)); };
  while (!encoded.empty()) {
    const std::string_view pair = encoded.substr(0, encoded.find(separator));
    encoded.remove_prefix(std::min(pair.size() + 1, encoded.size()));
    const std::string_view trimmed =
        pair.substr(std::min(pair.find_first_not_of(' '), pair.size()));
    if (trimmed.empty()) continue;
    const std::size_t equals = std::min(trimmed.find('='), trimmed.size());
    add(fields, text(trimmed.substr(0, equals)),
        text(trimmed.substr(std::min(equals + 1, trimmed.size()))));
  }
  return fields;
}

bool isPosition(const VARIANT& key) noexcept {
  return key.vt == VT_I2 || key.vt == VT_I4 || key.vt == VT_R8 || key.vt == VT_UI1;
}

Object makeCollection(const StopFlag& stop, CollectionParts parts) {
  const auto shared = std::make_shared<const CollectionParts>(std::move(parts));
  std::vector<Variant> names;
  for (const Field& field : shared->fields) names.emplace_back(field.name);
  return pageObject(stop)
      .defaultMember(
          [shared](Arguments arguments) -> Variant {
            if (arguments.empty()) return shared->whole;
            if (isPosition(arguments[0]))
              return shared->item(elementAt(shared->fields, arguments[0]));
            const Field* field = find(shared->fields, textOf(arguments[0]));
            return field == nullptr ? Variant() : shared->item(*field);
          },
          {}, {0, 1})
      .defaultName(u"Item")
      .property(u"Count", [shared] { return countOf(shared->fields); })
      .elements(names)
      .object();
}

Object makeValueList(const StopFlag& stop, const Field& field) {
  const auto shared = std::make_shared<const Field>(field);
  return pageObject(stop)
      .defaultMember(
          [shared](Arguments arguments) {
            return Variant(arguments.empty() ? shared->joined()
                                             : elementAt(shared->values, arguments[0]));
          },
          {}, {0, 1})
      .defaultName(u"Item")
      .property(u"Count", [shared] { return countOf(shared->values); })
      .elements({shared->values.begin(), shared->values.end()})
      .object();
}

}  // namespace quendal::host
