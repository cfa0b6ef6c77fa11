// Questions about the machine that take more than one question to the platform. None of them raises
// unless it says so.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quendal::system {

/// Fills the apartment's operating-system record. Raises 5 for a product name of no bytes at all.
void recordOSVersion();

/// "64 Bit" when the platform's emulation flag is exactly True, else "32 Bit". The flag is 1 at
/// most, so the answer is "32 Bit" everywhere; deliberate.
[[nodiscard]] std::u16string queryBitText();

/// "... Days ... Hours ... Minutes ... Seconds" of so many milliseconds, without the leading units
/// that are not reached. Units are rounded, not cut (90 seconds are "2 Minutes 30 Seconds");
/// deliberate.
[[nodiscard]] std::u16string upTimeText(std::int32_t ticks);

/// Path of a shell folder with a trailing "\", or the empty string.
[[nodiscard]] std::u16string querySpecialFolder(int id);

/// Product version of the web server's executable; empty when it is not installed.
[[nodiscard]] std::u16string queryIISVersion();

/// The greatest installed runtime-framework version by code units, or the empty string.
[[nodiscard]] std::u16string queryDotNetVersion();

/// Names of the installed ODBC drivers, in the registry's order.
[[nodiscard]] std::vector<std::u16string> queryODBCDrivers();

}  // namespace quendal::system
