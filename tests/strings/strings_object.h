// A `ClsString` object called as a page calls it, and its results as one readable text.
#pragma once

#include <string>

#include "base/utf8.h"
#include "core/dispatch.h"
#include "platform/code_page.h"
#include "strings/string_functions.h"
#include "tests/support/text_rows.h"

namespace quendal::test {

/// "Empty", "True", "False", or the text in quotes, which is also its type.
inline std::string shown(const Variant& value) {
  if (value.vt == VT_BSTR) return '"' + toUtf8(viewOf(value.bstrVal)) + '"';
  if (value.vt == VT_BOOL) return value.boolVal == VARIANT_TRUE ? "True" : "False";
  return toUtf8(typeNameOf(value));
}

inline std::string inQuotes(std::string_view text) { return '"' + std::string(text) + '"'; }

/// What a member returns, or "error n".
template <class... Arguments>
std::string called(std::u16string_view member, Arguments&&... arguments) {
  const Object strings = Owned<StringFunctions>::make().object();
  try {
    return shown(strings.call(member, std::forward<Arguments>(arguments)...));
  } catch (const AutomationError& error) {
    return "error " + std::to_string(error.number());
  }
}

/// Checks a member of one argument with a table of argument and result.
inline void expectPairs(std::u16string_view member, std::u16string_view rows) {
  forEachPair(rows, [member](std::u16string_view argument, const std::string& result) {
    EXPECT_EQ(called(member, argument), inQuotes(result)) << toUtf8(member);
  });
}

/// For tests whose expectations hold for one code page only.
inline bool isWesternCodePage() { return platform::fromCodePage("\x80\xE9") == u"\u20AC\u00E9"; }

}  // namespace quendal::test
