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
      rows_.emplace_back();
      row.id = static_cast<DISPID>(rows_.size());
      names_.push_back(row.name);
    }
    Rows& rows = rows_[static_cast<std::size_t>(row.id - 1)];
    (row.kind == MemberKind::Put ? rows.put : rows.read) = &row;
  }
}

DISPID ClassDescription::idOf(std::u16string_view name) const noexcept {
  const auto found = std::ranges::find_if(names_, [name](std::u16string_view known) {
    return known.size() == name.size() && equalNoCase(known, name);  // most differ in length
  });
  return found != names_.end() ? static_cast<DISPID>(found - names_.begin()) + 1 : DISPID_UNKNOWN;
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
