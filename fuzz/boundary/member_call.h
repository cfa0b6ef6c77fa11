// Calls of the library's members, as the input says.
#pragma once

#include <cstdint>
#include <cstdio>

#include "boundary/page.h"
#include "component/catalogue.h"

namespace quendal::fuzz {

enum class Way { ByName, ThroughTable };

/// Calls a member of a class with arguments that the input says, on an object that a variable
/// holds; nobody else keeps it. The result may go to a variable. Does nothing when calls are nested
/// too deeply. Ends the process when an error tells of an exception that nobody expected.
void callMember(Page& page, std::size_t classIndex, std::size_t rowIndex, Way way);
/// Calls some member of some class.
void callAnything(Page& page);

/// A new object of a class, counted round, which mostly has what its members need; null when it
/// cannot be created.
[[nodiscard]] Object libraryObject(Page& page, std::size_t classIndex);

/// How often a member itself ran, not only refused its arguments.
[[nodiscard]] std::uint64_t timesReached(std::size_t classIndex, std::size_t rowIndex, Way way);

/// Prints how many calls were made since the start and how many rows they reached; returns whether
/// these are all.
bool reportCalls(std::FILE* out);

/// Before the first call. Ends the process unless every row of every table can be called.
void prepareCalls();

}  // namespace quendal::fuzz
