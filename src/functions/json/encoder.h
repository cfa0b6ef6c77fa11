// Values into JSON text.
#pragma once

#include <quendal/variant.h>

namespace quendal::json {

/// A text value with the JSON text of a value, without any layout. References are followed. Takes
/// arrays of Variants, dictionaries and open database cursors ("Recordset"), nested in any way;
/// numbers in their ordinary text form with "." as the decimal separator; all other plain values as
/// their ordinary text in quotation marks. Keys, field names and such texts are not escaped.
///
/// Raises 8732 for any other object, 13 for arrays of other elements, 28 for nesting beyond what
/// fits the thread's stack (a dictionary that holds itself is one), and what a cursor raises.
[[nodiscard]] Variant encode(const VARIANT& value);

}  // namespace quendal::json
