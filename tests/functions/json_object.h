// A `JSON` object called as a page calls it, and values as one readable text.
#pragma once

#include <string>

#include "base/utf8.h"
#include "core/dictionary.h"
#include "core/dispatch.h"
#include "functions/json/json.h"

namespace quendal::test::json {

/// Doubles as numbers, text in apostrophes, "Null", "True", arrays in brackets, dictionaries in
/// braces; other values by their type's name.
inline std::string shown(const VARIANT& value) {
  switch (value.vt) {
    case VT_R8:
      return toUtf8(textOf(value));
    case VT_BSTR:
      return "'" + toUtf8(viewOf(value.bstrVal)) + "'";
    case VT_BOOL:
      return toUtf8(textOf(value));
    case kVariantArray: {
      std::string all = "[";
      forEach(value, [&](const Variant& element) {
        all += (all.size() == 1 ? "" : " ") + shown(element);
      });
      return all + "]";
    }
    case VT_DISPATCH: {
      const auto dictionary = Dictionary::from(Object::from(value));
      if (!dictionary) break;
      std::string all = "{";
      forEach(dictionary->keys(), [&](const Variant& key) {
        all +=
            (all.size() == 1 ? "" : " ") + toUtf8(textOf(key)) + ":" + shown(dictionary->item(key));
      });
      return all + "}";
    }
    default:
      break;
  }
  return toUtf8(typeNameOf(value));
}

/// A new one. (None is kept for a thread: with MinGW `thread_local` destructors meet freed
/// storage.)
inline Object object() { return Owned<Json>::make().object(); }

/// What a call returns, or "number source: description" of the error.
template <class Call>
std::string outcomeOf(Call&& call) {
  try {
    return shown(call());
  } catch (const AutomationError& error) {
    return std::to_string(error.number()) + " " + toUtf8(error.source()) + ": " +
           toUtf8(error.description());
  }
}

inline Variant decode(std::u16string_view text) { return object().call(u"Decode", text); }
inline Variant encode(const Variant& value) { return object().call(u"Encode", value); }

}  // namespace quendal::test::json
