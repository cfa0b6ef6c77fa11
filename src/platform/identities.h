// Who and where the code runs.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quendal::platform {

/// The machine's name, empty when the system does not tell.
[[nodiscard]] std::u16string computerName();

/// The account name of the running thread, asked for at each call, so that impersonation shows.
/// Empty when the system does not tell.
[[nodiscard]] std::u16string userName();

[[nodiscard]] std::int32_t processId() noexcept;
[[nodiscard]] std::int32_t threadId() noexcept;

/// An environment variable's value, the empty string when it is not set. Names are compared
/// without case; on POSIX the exact name comes first.
[[nodiscard]] std::u16string environmentVariable(std::u16string_view name);

/// The system's version record; the numbers are 0 when the system does not tell. On POSIX it is
/// the kernel's release ("6.1.0-13" is 6, 1, 0) with platform 4 and no service pack.
struct OSVersion {
  std::int32_t major = 0;
  std::int32_t minor = 0;
  std::int32_t build = 0;
  std::int32_t platformId = 0;  // 2 for the NT family
  std::u16string servicePack;   // the raw 128-character field: text, NUL, and blanks or NULs
};
[[nodiscard]] OSVersion osVersion();

/// The raw answer of the emulation query: 1 in a 32-bit process on a 64-bit system, else 0.
[[nodiscard]] std::int16_t wow64Flag() noexcept;

/// A new random (version 4) identifier, "{8-4-4-4-12}" without the braces, upper-case digits.
/// Empty when the system has no randomness to give.
[[nodiscard]] std::u16string newIdentifier();

}  // namespace quendal::platform
