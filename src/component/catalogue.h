// All classes of the library.
#pragma once

#include <quendal/object.h>

#include <span>

#include "core/class_description.h"

namespace quendal {

struct CatalogueEntry {
  const ClassDescription& description;
  Object (*create)();  // raises what the class's creation raises
};

/// The nine classes, the two that clients can create first.
[[nodiscard]] std::span<const CatalogueEntry> catalogue();

/// The class that clients can create under an identifier; null for any other.
[[nodiscard]] const CatalogueEntry* findCreatable(REFCLSID classId);
[[nodiscard]] const CatalogueEntry* findCreatable(std::u16string_view programId);

}  // namespace quendal
