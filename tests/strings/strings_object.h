// A `ClsString` object called as a page calls it, and its results as one readable text.
#pragma once

#include <string>

#include "base/utf8.h"
#include "core/dispatch.h"
#include "strings/string_functions.h"
#include "tests/support/outcome.h"

namespace quendal::test {

/// "Empty", "True", "False", or the text in quotes, which is also its type.
inline std::string shown(const Variant& value) {
  if (value.vt == VT_BSTR) return '"' + toUtf8(viewOf(value.bstrVal)) + '"';
  return toUtf8(value.vt == VT_BOOL ? textOf(value) : typeNameOf(value));
}

inline std::string inQuotes(std::string_view text) { return '"' + std::string(text) + '"'; }

/// What a member returns, or "error n".
template <class... Arguments>
std::string called(std::u16string_view member, Arguments&&... arguments) {
  const Object strings = Owned<StringFunctions>::make().object();
  return textOrError(
      [&] { return shown(strings.call(member, std::forward<Arguments>(arguments)...)); });
}

}  // namespace quendal::test
