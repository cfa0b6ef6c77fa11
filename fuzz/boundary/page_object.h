// Objects of the page: foreign code to the library.
#pragma once

#include "boundary/page.h"

namespace quendal::fuzz {

/// Null, an object of the page's own, a dictionary, an object of the library, or what a variable
/// holds.
[[nodiscard]] Object anyObject(Page& page);

/// An object of the page's own. It has every member, as a context, a collection, a dictionary, a
/// cursor or an error has them. Before one answers, the page acts; so it may when the object is
/// asked for its type or its members' names, and when it goes.
[[nodiscard]] Object pageObject(Page& page);

}  // namespace quendal::fuzz
