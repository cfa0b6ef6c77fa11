// Calls of the library's members, as the input says.
#pragma once

#include <cstdio>

#include "boundary/page.h"
#include "component/catalogue.h"

namespace quendal::fuzz {

/// Calls some member of some class, by name or through the function table, on an object that a
/// variable holds; nobody else keeps it. The result goes to a variable. Does nothing when calls are
/// nested too deeply. Ends the process when an error tells of an exception that nobody expected.
void callAnything(Page& page);

/// A new object of a class, counted round; null when it cannot be created.
[[nodiscard]] Object libraryObject(Page& page, std::size_t classIndex);

/// Prints how many calls were made since the start and how many rows they reached.
void reportCalls(std::FILE* out);

/// Ends the process unless every row of every table can be called.
void checkTables();

}  // namespace quendal::fuzz
