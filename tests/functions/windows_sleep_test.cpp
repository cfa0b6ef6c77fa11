// Sleep while messages come.
#include <gtest/gtest.h>

#include <chrono>

#include "functions/functions.h"

namespace quendal::test {
namespace {

int received = 0;

LRESULT CALLBACK count(HWND window, UINT message, WPARAM word, LPARAM value) {
  if (message == WM_TIMER || message == WM_APP) ++received;
  return DefWindowProcW(window, message, word, value);
}

TEST(Sleep, DispatchesMessagesAndLastsAsLongAllTheSame) {
  using Clock = std::chrono::steady_clock;
  const HWND window = CreateWindowExW(0, L"Static", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                      GetModuleHandleW(nullptr), nullptr);
  ASSERT_NE(window, nullptr);
  SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&count));
  received = 0;
  const Clock::time_point start = Clock::now();
  SetTimer(window, 1, 50, nullptr);
  Variant milliseconds(std::int32_t{400});
  VariantRef reference(&milliseconds);
  Owned<Functions>::make()->sleep(reference);
  const auto took = Clock::now() - start;
  KillTimer(window, 1);
  EXPECT_GE(received, 3);
  EXPECT_GE(took, std::chrono::milliseconds(380));
  EXPECT_LE(took, std::chrono::seconds(3));

  // A negative count is a wait without limit that the first message ends.
  received = 0;
  PostMessageW(window, WM_APP, 0, 0);
  milliseconds = Variant(std::int32_t{-1});
  Owned<Functions>::make()->sleep(reference);
  EXPECT_EQ(received, 1);
  DestroyWindow(window);
}

}  // namespace
}  // namespace quendal::test
