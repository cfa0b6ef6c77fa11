// What the library keeps for each apartment, that is for each thread that uses it: the one place
// of state that outlives a call and is not an object's own.
#pragma once

#include <quendal/object.h>

#include <cstdint>
#include <exception>
#include <string>

#include "platform/thread_state.h"

namespace quendal {

/// The objects of the page that runs on this thread; all null outside a page.
struct PageObjects {
  Object session;
  Object application;
  Object request;
  Object response;
  Object server;

  /// Takes all five from a host's scripting context. Raises what the context raises; slots taken
  /// before the failure stay taken.
  void takeFrom(const Object& scriptingContext);
  /// Forgets all five without releasing them.
  void abandon() noexcept;
};

/// The operating-system version record and product name, as the last query left them.
struct OSVersionState {
  std::u16string productName;
  std::int32_t major = 0;
  std::int32_t minor = 0;
  std::int32_t build = 0;
  std::int32_t platformId = 0;
  std::u16string servicePack;  // NUL and blanks included, as the system fills it
};

struct Apartment final : platform::ThreadState {
  PageObjects page;
  std::int16_t groupDepth = 0;
  OSVersionState osVersion;
  /// The pending error's number, as a script would see it; 0 when there is none. Set when an
  /// ignored step or a member fails, cleared where a member starts afresh.
  std::int32_t errorNumber = 0;

  /// Abandons a page that was not ended: its objects' modules may be gone by now.
  ~Apartment() override;
};

/// The calling thread's own; created empty when the thread first touches the library, destroyed
/// when the thread ends. Throws std::bad_alloc when it cannot be created.
Apartment& apartment();
/// Null for a thread that has none yet.
[[nodiscard]] Apartment* apartmentIfAny() noexcept;

/// A thread without an apartment gets one, unless memory is short.
void setPendingError(std::int32_t number) noexcept;
inline void clearError() noexcept {
  if (Apartment* const own = apartmentIfAny()) own->errorNumber = 0;
}
[[nodiscard]] inline std::int32_t pendingError() noexcept {
  const Apartment* const own = apartmentIfAny();
  return own == nullptr ? 0 : own->errorNumber;
}

/// Leaves the exception that is being handled pending. Returns its number: an AutomationError's
/// own, 7 when memory is short, 51 for anything unforeseen.
std::int32_t setPendingException() noexcept;

/// Runs one step whose failure is skipped: the error stays pending and the caller goes on.
/// Returns whether the step succeeded.
template <class Step>
bool ignoringErrors(Step&& step) {
  try {
    step();
    return true;
  } catch (const std::exception&) {
    setPendingException();
    return false;
  }
}

}  // namespace quendal
