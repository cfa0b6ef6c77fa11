#include "core/class_description.h"

#include <algorithm>

#include "base/text.h"
#include "core/dispatch.h"

namespace quendal {

ClassDescription::ClassDescription(const ClassIdentity& identity,
                                   std::span<const MemberRow> members)
    : identity_(identity), members_(members.begin(), members.end()) {
  const auto entries = dispatchEntries();
  table_.assign(entries.begin(), entries.end());
  for (MemberRow& row : members_) {
    table_.push_back(row.slot);
    const DISPID known = idOf(row.name);
    if (known != DISPID_UNKNOWN) {
      row.id = known;
    } else {
      rows_.push_back({row.name});
      row.id = static_cast<DISPID>(rows_.size());
    }
    Rows& rows = rows_[static_cast<std::size_t>(row.id - 1)];
    (row.kind == MemberKind::Put ? rows.put : rows.read) = &row;
  }
}

DISPID ClassDescription::idOf(std::u16string_view name) const noexcept {
  // The length alone tells most of them apart.
  const auto found = std::ranges::find_if(rows_, [name](const Rows& rows) {
    return rows.name.size() == name.size() && equalNoCase(rows.name, name);
  });
  return found != rows_.end() ? static_cast<DISPID>(found - rows_.begin()) + 1 : DISPID_UNKNOWN;
}

DISPID ClassDescription::parameterOf(DISPID member, std::u16string_view name) const noexcept {
  if (member < 1 || static_cast<std::size_t>(member) > rows_.size()) return DISPID_UNKNOWN;
  const Rows& rows = rows_[static_cast<std::size_t>(member - 1)];
  for (const MemberRow* row : {rows.read, rows.put}) {
    if (row == nullptr) continue;
    const auto parameters = row->parameters();
    for (std::size_t i = 0; i < parameters.size(); ++i)
      if (equalNoCase(parameters[i].name, name)) return static_cast<DISPID>(i);
  }
  return DISPID_UNKNOWN;
}

const MemberRow* ClassDescription::find(DISPID id, WORD flags) const noexcept {
  if (id < 1 || static_cast<std::size_t>(id) > rows_.size()) return nullptr;
  const Rows& rows = rows_[static_cast<std::size_t>(id - 1)];
  if ((flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) return rows.put;
  if (rows.read == nullptr) return nullptr;
  // A property may also be asked for with call syntax; a method is never run by a mere read.
  const WORD wanted = rows.read->kind == MemberKind::Method
                          ? DISPATCH_METHOD
                          : DISPATCH_PROPERTYGET | DISPATCH_METHOD;
  return (flags & wanted) != 0 ? rows.read : nullptr;
}

}  // namespace quendal
