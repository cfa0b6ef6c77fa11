// Calls every member of every class, in sequences, from pages that do whatever the input says when
// the library calls back: whatever a page does, each call returns, with the memory whole.
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "boundary/allocation.h"
#include "boundary/member_call.h"
#include "boundary/page.h"
#include "boundary/sandbox.h"

namespace {

// What is larger cannot be had, which is a case of its own.
constexpr std::size_t kLargestBlock = std::size_t{4} << 20;
constexpr int kCalls = 40;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quendal::fuzz;
  static Sandbox sandbox;
  static const bool isReady = [] {
    prepareCalls();
    allocationRule.largest = kLargestBlock;
    std::atexit([] { reportCalls(stderr); });
    return true;
  }();
  static_cast<void>(isReady);
  sandbox.enter();
  {
    Input input({data, size});
    Page page(input);
    for (int i = 0; i < kCalls && !input.ended(); ++i) callAnything(page);
  }
  sandbox.leave();
  return 0;
}
