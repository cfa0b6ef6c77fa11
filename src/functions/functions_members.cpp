// The members of `FUNCTIONS`, in slot order.
#include "core/guid.h"
#include "core/members.h"
#include "functions/functions.h"

namespace quendal {

template <>
const ClassDescription& describe<Functions>() {
  using F = Functions;
  static const MemberRow rows[] = {
      get<&F::json>(u"JSON", u"The JSON encoder and decoder."),
      get<&F::concat>(u"Concat", u"The string builder."),
      get<&F::strings>(u"STRINGS", u"The text functions."),
      get<&F::arrays>(u"ARRAYS", u"The array functions."),
      get<&F::dictionaries>(u"Dictionaries", u"The dictionary functions."),
      get<&F::os>(u"OS", u"Operating-system and locale information."),
      method<&F::sleep>(u"Sleep", u"Waits, dispatching the thread's messages.",
                        {in(u"IN_iMilliseconds")}),
      method<&F::max>(u"Max", u"The greatest of the arguments.", {in(u"args")}),
      method<&F::min>(u"Min", u"The least of the arguments.", {in(u"args")}),
  };
  static const ClassDescription description(
      {F::kClassName, u"_FUNCTIONS", guid("F08C97E1-0CE9-4B97-B3FE-FA5FCAD4B434"),
       guid("A516BAF4-2614-4877-85FA-54159315219F"), u"QUENDAL_REPORTS_ASP.FUNCTIONS",
       u"A library of script helpers."},
      rows);
  return description;
}

}  // namespace quendal
