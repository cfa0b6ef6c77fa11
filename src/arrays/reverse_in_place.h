// Turning the order of an array's elements round.
#pragma once

#include <quendal/variant.h>

namespace quendal {

/// `array` is not a reference and holds an allocated array of one dimension. Elements are numbers,
/// texts and other simple values, or objects, which move as references. Raises 5002 for elements
/// that are arrays or records, before anything is moved.
void reverseArrayInPlace(const VARIANT& array);

}  // namespace quendal
