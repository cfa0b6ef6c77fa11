// The thread's message queue and the system log.
#pragma once

#include <cstdint>
#include <string_view>

namespace quendal::platform {

/// Dispatches the messages that wait in the thread's queue, once. Nothing where there is none.
void pumpMessages() noexcept;

enum class WaitResult { TimedOut, Message };

/// Waits until input for this thread arrives or `milliseconds` have passed (0xFFFFFFFF: no
/// limit). Messages that other threads send are not waited for. On POSIX threads have no queue:
/// the whole time passes, and without limit means 49.7 days.
[[nodiscard]] WaitResult waitForMessage(std::uint32_t milliseconds) noexcept;

/// Writes one line to the system's log (the application event log, syslog), where a server's
/// keeper looks, in place of a box that nobody can click. Control characters become blanks; a
/// very long line may be cut. Never fails.
void systemLog(std::u16string_view message) noexcept;

}  // namespace quendal::platform
