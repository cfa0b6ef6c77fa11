// The members of `Concat`, in slot order.
#include "core/guid.h"
#include "core/members.h"
#include "functions/concat.h"

namespace quendal {

template <>
const ClassDescription& describe<Concat>() {
  using C = Concat;
  static const MemberRow rows[] = {
      get<&C::value>(u"Value", u"The content."),
      put<&C::setValue>(u"Value", u"Replaces the content, keeping the capacity.",
                        {in(u"IN_szString")}),
      get<&C::buffer>(u"Buffer", u"The whole buffer, spare blanks included."),
      get<&C::text>(u"Text", u"The content in quotes of a style.",
                    {optional(u"IN_sbQuoteType", 0)}),
      get<&C::length>(u"Length", u"Number of characters of the content."),
      get<&C::bufferLength>(u"BufferLength", u"The capacity in characters."),
      method<&C::clear>(u"Clear", u"Empties the builder, with a new capacity.",
                        {optional(u"IN_lTotalLength")}),
      method<&C::trimToSize>(u"TrimToSize", u"Cuts leading and trailing blanks off the buffer."),
      method<&C::append>(u"Append", u"Appends the text of each argument.", {in(u"IN_szString")}),
      method<&C::appendEx>(u"AppendEx", u"Appends one text in quotes of a style.",
                           {in(u"IN_szString"), optional(u"IN_sbQuoteType")}),
      method<&C::prepend>(
          u"Prepend", u"Inserts one text in quotes of a style at a position.",
          {in(u"IN_szString"), optional(u"IN_iIndex", 0), optional(u"IN_sbQuoteType")}),
  };
  static const ClassDescription description({C::kClassName,
                                             u"_Concat",
                                             guid("5E8E15F4-B73F-4941-9325-2BD05E87B074"),
                                             guid("6B7AB1AB-096E-4D8C-A820-B04C07AEB58D"),
                                             {},
                                             u"A string builder."},
                                            rows);
  return description;
}

}  // namespace quendal
