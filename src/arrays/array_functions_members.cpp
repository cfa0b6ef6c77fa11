// The members of `ClsArray`, in slot order.
#include "arrays/array_functions.h"
#include "core/guid.h"
#include "core/members.h"

namespace quendal {

template <>
const ClassDescription& describe<ArrayFunctions>() {
  using A = ArrayFunctions;
  static const MemberRow rows[] = {
      method<&A::getUBound>(u"GetUBound", u"The upper bound; -1 for an unallocated array.",
                            {in(u"Arr")}),
      method<&A::getLBound>(u"GetLBound", u"The lower bound; -1 for an unallocated array.",
                            {in(u"Arr")}),
      method<&A::push>(u"Push", u"Adds an element at the end.", {in(u"Arr"), in(u"szValue")}),
      method<&A::pop>(u"Pop", u"Takes the last element off.", {in(u"Arr")}),
      method<&A::shift>(u"Shift", u"Takes the first element off.", {in(u"Arr")}),
      method<&A::unshift>(u"Unshift", u"Overwrites the first element, keeping the length.",
                          {in(u"Arr"), in(u"varValue")}),
      method<&A::slice>(u"Slice", u"Copies some elements into a new array, or takes them out.",
                        {in(u"Arr"), in(u"bRemove"), in(u"iStart"), optional(u"iEnd", 1)}),
      method<&A::splice>(u"Splice", u"Replaces some elements by others; returns the former.",
                         {in(u"Arr"), in(u"iOffset"), in(u"iLength"), in(u"values")}),
      method<&A::reverse>(u"Reverse", u"Turns the order of the elements round.", {in(u"Arr")}),
      method<&A::sort>(
          u"Sort", u"Sorts in place; False for an array that cannot be sorted.",
          {in(u"InputArray"), optional(u"LB", -1), optional(u"UB", -1), optional(u"Descending", 0),
           optional(u"CompareMode", 1), optional(u"NoAlerts", -1)}),
  };
  static const ClassDescription description({A::kClassName,
                                             u"_ClsArray",
                                             guid("88C42EA7-29AF-4372-B8D4-801CF28DBABB"),
                                             guid("E54363E0-54AB-4AE0-8699-57835FE82310"),
                                             {},
                                             u"Array functions."},
                                            rows);
  return description;
}

}  // namespace quendal
