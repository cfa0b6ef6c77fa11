// Under what the library writes to the event log.
#pragma once

namespace quendal::platform {

/// The name of the source, which registration makes known.
inline constexpr const wchar_t* kEventSource = L"QUENDAL_REPORTS_ASP";
/// The number of every event.
inline constexpr unsigned long kEvent = 1;

}  // namespace quendal::platform
