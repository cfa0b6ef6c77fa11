// The members of `ClsDictionary`, in slot order.
#include "arrays/dictionary_functions.h"
#include "core/guid.h"
#include "core/members.h"

namespace quendal {

template <>
const ClassDescription& describe<DictionaryFunctions>() {
  using D = DictionaryFunctions;
  static const MemberRow rows[] = {
      method<&D::sort>(
          u"Sort", u"Puts the entries of a dictionary in order.",
          {in(u"Dict"), in(u"SortByKey"), optional(u"Descending", 0), optional(u"CompareMode", 1)}),
  };
  static const ClassDescription description({D::kClassName,
                                             u"_ClsDictionary",
                                             guid("14277174-C2D6-404D-BF66-4188ADCD5913"),
                                             guid("FF59D671-6BC3-412F-9683-C4E7FB60BBA8"),
                                             {},
                                             u"Dictionary functions."},
                                            rows);
  return description;
}

}  // namespace quendal
