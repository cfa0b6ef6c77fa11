// Arrays as hosts hold and pass them, and their contents as text.
#pragma once

#include <quendal/object.h>

#include <string>
#include <vector>

#include "base/utf8.h"
#include "core/variant_ref.h"
#include "tests/core/raw_call.h"
#include "tests/support/outcome.h"
#include "tests/support/script_object.h"

namespace quendal::test {

/// An array of one-letter texts; an unallocated one for null.
inline Variant of(const char16_t* elements, VARTYPE type = VT_VARIANT, LONG lowerBound = 0) {
  if (elements == nullptr) return Variant::array(nullptr, type);
  std::vector<Variant> values;
  for (; *elements != 0; ++elements) values.emplace_back(std::u16string_view(elements, 1));
  return arrayOf(values, type, lowerBound);
}

inline Variant twoDimensions() {
  SAFEARRAYBOUND bounds[] = {{1, 0}, {2, 0}};
  return Variant::array(SafeArrayCreate(VT_VARIANT, 2, bounds));
}

/// "abc", "?" for an object, "[...]" for arrays, "none" for an unallocated array, "~" for Empty;
/// a lower bound other than 0 stands before the elements.
inline std::string shownArray(const VARIANT& value) {
  const VARIANT plain = follow(value);
  if (plain.vt == VT_EMPTY) return "~";
  if (plain.vt == VT_NULL) return "Null";
  if (plain.vt == VT_DISPATCH || plain.vt == VT_UNKNOWN) return plain.punkVal ? "?" : "Nothing";
  if ((plain.vt & VT_ARRAY) == 0) return toUtf8(textOf(plain));
  if (plain.parray == nullptr) return "none";
  const LONG lower = plain.parray->rgsabound[0].lLbound;
  std::string text = lower == 0 ? "[" : std::to_string(lower) + "[";
  const ArrayView view(plain);
  for (std::size_t i = 0; i < view.size(); ++i) text += (i > 0 ? " " : "") + shownArray(view.at(i));
  return text + "]";
}

/// A page's variable that holds an array, and the argument that a call of it gets: a reference to
/// the variable or, `typed`, to the place of the array itself; or a reference to such a one.
struct PageVariable {
  explicit PageVariable(Variant value, bool typed = false, bool twice = false)
      : variable(std::move(value)),
        inner(typed ? typedReference(variable.vt, &variable.parray) : referenceTo(variable)),
        outer(twice ? referenceTo(inner) : inner),
        reference(outer) {}
  [[nodiscard]] const VARIANT& argument() const noexcept { return outer; }

  Variant variable;
  VARIANT inner, outer;
  VariantRef reference;
};

/// Each way in which a host passes a variable.
inline constexpr struct {
  bool typed, twice;
} kWays[] = {{false, false}, {true, false}, {false, true}, {true, true}};

}  // namespace quendal::test
