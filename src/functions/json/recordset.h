// Open database cursors as JSON.
#pragma once

#include <quendal/object.h>

#include <functional>

#include "functions/json/writer.h"

namespace quendal::json {

/// Writes a cursor's state and, when it is open, its count of rows and all rows; afterwards it
/// stands on its first row. `encode` writes the value of a field. Raises what the cursor raises,
/// which may then stand on any row.
void writeRecordset(const Object& recordset, Writer& out,
                    const std::function<void(const VARIANT&)>& encode);

}  // namespace quendal::json
