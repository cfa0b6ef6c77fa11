// Questions about the machine. None of them raises unless it says so, and none keeps state except
// queryOSName, which fills the apartment's operating-system record.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <quendal/variant.h>

namespace quendal::system {

/// Fills the apartment's operating-system record. Returns "Unknown" on every system; that is
/// deliberate: it is called for the record alone.
std::u16string queryOSName();

/// The raw flag, 1 (not True) in a 32-bit process on a 64-bit system, else 0.
[[nodiscard]] Boolean queryIsWow64();

/// "64 Bit" when the flag above is exactly True, else "32 Bit". As the flag is never exactly True,
/// the answer is "32 Bit" everywhere; deliberate.
[[nodiscard]] std::u16string queryBitText();

/// Milliseconds since system start; negative after 2^31 of them.
[[nodiscard]] std::int32_t queryTickCount() noexcept;

/// "... Days ... Hours ... Minutes ... Seconds" of the time since system start, without the
/// leading units that are not reached.
[[nodiscard]] std::u16string queryUpTime();
/// The same for a given tick count. Units are rounded, not cut (90 seconds are "2 Minutes 30
/// Seconds"); deliberate.
[[nodiscard]] std::u16string upTimeText(std::int32_t ticks);

[[nodiscard]] std::u16string queryComputerName();
[[nodiscard]] std::u16string queryUserName();
[[nodiscard]] std::int32_t queryProcessId() noexcept;
[[nodiscard]] std::int32_t queryThreadId() noexcept;

/// Path of a shell folder with a trailing "\", or the empty string.
[[nodiscard]] std::u16string querySpecialFolder(int id);

/// Product version of the web server's executable; empty when it is not installed.
[[nodiscard]] std::u16string queryIISVersion();

/// Installed runtime-framework versions, in the registry's order.
[[nodiscard]] std::vector<std::u16string> queryDotNetVersions();

/// The greatest of them by code units, or the empty string.
[[nodiscard]] std::u16string queryDotNetVersion();

/// Names of the installed ODBC drivers, in the registry's order.
[[nodiscard]] std::vector<std::u16string> queryODBCDrivers();

}  // namespace quendal::system
