// The members of `JSON`, in slot order.
#include "core/guid.h"
#include "core/members.h"
#include "functions/json/json.h"

namespace quendal {

template <>
const ClassDescription& describe<Json>() {
  using J = Json;
  static const MemberRow rows[] = {
      method<&J::encode>(u"Encode", u"The JSON text of a value.", {in(u"obj")}),
      method<&J::decode>(u"Decode", u"The value of a JSON text.", {in(u"str")}),
  };
  static const ClassDescription description({J::kClassName,
                                             u"_JSON",
                                             guid("1B87FDC2-701A-470B-83CC-04375BF7FC92"),
                                             guid("3AB3636D-95E3-4D62-8CC0-4ED3F396C1C0"),
                                             {},
                                             u"A JSON encoder and decoder."},
                                            rows);
  return description;
}

}  // namespace quendal
