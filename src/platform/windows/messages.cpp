#include "platform/messages.h"

#include <quendal/automation.h>

#include <algorithm>
#include <array>
#include <cstdint>

#include "platform/windows/event_source.h"
#include "platform/windows/wide.h"

namespace quendal::platform {
namespace {

// Keys, mouse, posted messages, timers, painting and hot keys; deliberately not what other threads
// send, which is delivered when something of these comes, or the wait ends.
constexpr DWORD kAwaitedInput = 0xBF;

constexpr std::size_t kMaxLine = 2048;

}  // namespace

void pumpMessages() noexcept {
  MSG message;
  while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
}

WaitResult waitForMessage(std::uint32_t milliseconds) noexcept {
  const DWORD result = MsgWaitForMultipleObjects(0, nullptr, FALSE, milliseconds, kAwaitedInput);
  return result == WAIT_TIMEOUT ? WaitResult::TimedOut : WaitResult::Message;
}

void systemLog(std::u16string_view message) noexcept {
  std::array<char16_t, kMaxLine> line;
  const std::size_t size = std::min(message.size(), kMaxLine - 1);
  std::transform(message.begin(), message.begin() + static_cast<std::ptrdiff_t>(size), line.begin(),
                 [](char16_t unit) { return unit < u' ' ? u' ' : unit; });
  line[size] = u'\0';
  OutputDebugStringW(oleText(line.data()));
  const EventSourceHandle source(RegisterEventSourceW(nullptr, kEventSource));
  if (!source) return;
  const wchar_t* texts[] = {oleText(line.data())};
  ReportEventW(source.get(), EVENTLOG_INFORMATION_TYPE, 0, kEvent, nullptr, 1, 0, texts, nullptr);
}

}  // namespace quendal::platform
