// Every member when memory is short: the n-th request for memory fails, or all from the n-th on,
// for n = 1, 2, 3, ... until a call needs no more. Each call returns, with an error or a result;
// nothing leaks; the object can be called again.
#include <sanitizer/common_interface_defs.h>
#include <sanitizer/lsan_interface.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "base/utf8.h"
#include "boundary/allocation.h"
#include "boundary/member_call.h"
#include "boundary/page.h"
#include "boundary/sandbox.h"

namespace {

using namespace quendal;
using namespace quendal::fuzz;

enum class Shortage { Once, FromThenOn };
enum class Scope { Call, CreationAndCall };

struct Case {
  std::size_t classIndex;
  std::size_t rowIndex;
  Way way;
  unsigned seed;  // of the arguments
  Shortage shortage = Shortage::Once;
  Scope scope = Scope::Call;
  std::uint64_t refused = UINT64_MAX;
};
Case current;  // told when the process dies

void tellCurrent() {
  const ClassDescription& description = catalogue()[current.classIndex].description;
  std::fprintf(stderr, "in %s.%s, %s, seed %u, request %llu%s%s\n",
               toUtf8(description.identity().name).c_str(),
               toUtf8(description.members()[current.rowIndex].name).c_str(),
               current.way == Way::ByName ? "by name" : "through the table", current.seed,
               static_cast<unsigned long long>(current.refused),
               current.shortage == Shortage::Once ? "" : " and all later ones",
               current.scope == Scope::Call ? "" : ", creation included");
}

/// Arguments first, then nothing but zeros: a page that does little in between.
std::vector<std::uint8_t> inputOf(unsigned seed) {
  constexpr std::size_t kBytes = 96;
  std::mt19937 random(seed);
  std::vector<std::uint8_t> bytes(kBytes);
  for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
  return bytes;
}

/// A page, an object and a call; then another call with memory enough. Returns whether the shortage
/// was felt.
bool isFelt(Sandbox& sandbox, const Case& test) {
  current = test;
  const std::vector<std::uint8_t> bytes = inputOf(test.seed);
  const auto beginShortage = [&] {
    allocationRule.requests = 0;
    allocationRule.firstRefused = test.refused;
    allocationRule.lastRefused = test.shortage == Shortage::Once ? test.refused : UINT64_MAX;
  };
  bool felt = false;
  sandbox.enter();
  {
    Input input(bytes);
    Page page(input);
    if (test.scope == Scope::CreationAndCall) beginShortage();
    Page::store(page.variable(0), Variant(libraryObject(page, test.classIndex)));
    if (test.scope == Scope::Call) beginShortage();
    callMember(page, test.classIndex, test.rowIndex, test.way);
    felt = allocationRule.requests >= test.refused;
    allocationRule.firstRefused = UINT64_MAX;
    callMember(page, test.classIndex, test.rowIndex, test.way);
  }
  sandbox.leave();
  return felt;
}

std::uint64_t tries = 0;
// With the argument "quick" not every request after this one is refused, but some.
constexpr std::uint64_t kEach = 64;
bool isQuick = false;

void tryAll(Sandbox& sandbox, Case test, bool onFreshThreads) {
  for (const Shortage shortage : {Shortage::Once, Shortage::FromThenOn}) {
    test.shortage = shortage;
    test.refused = 0;
    for (bool felt = true; felt; ++tries) {
      test.refused += isQuick && test.refused >= kEach ? test.refused / 8 : 1;
      if (onFreshThreads)
        std::thread([&] { felt = isFelt(sandbox, test); }).join();
      else
        felt = isFelt(sandbox, test);
    }
  }
}

/// Tries a member with a few of the inputs that reach it when memory is not short.
void tryMember(Sandbox& sandbox, std::size_t classIndex, std::size_t rowIndex, Way way) {
  constexpr unsigned kMostInputs = 60;
  constexpr unsigned kInputs = 3;
  constexpr std::size_t kRowsOnFreshThreads = 3;  // of each class
  const MemberRow& row = catalogue()[classIndex].description.members()[rowIndex];
  unsigned wanted = row.parameterCount == 0 ? 1 : kInputs;
  for (unsigned seed = 0; seed < kMostInputs && wanted > 0; ++seed) {
    Case test{classIndex, rowIndex, way, seed};
    const std::uint64_t before = timesReached(classIndex, rowIndex, way);
    static_cast<void>(isFelt(sandbox, test));
    if (timesReached(classIndex, rowIndex, way) < before + 2) continue;
    --wanted;
    tryAll(sandbox, test, false);
    if (rowIndex >= kRowsOnFreshThreads) continue;
    tryAll(sandbox, test, true);
    test.scope = Scope::CreationAndCall;
    tryAll(sandbox, test, true);
  }
}

}  // namespace

int main(int count, char** arguments) {
  isQuick = count > 1 && std::string_view(arguments[1]) == "quick";
  prepareCalls();
  __sanitizer_set_death_callback(&tellCurrent);
  std::set_terminate([] {
    std::fputs("terminate was called\n", stderr);
    std::abort();
  });
  Sandbox sandbox;
  int leaks = 0;
  for (std::size_t c = 0; c < catalogue().size(); ++c) {
    for (std::size_t r = 0; r < catalogue()[c].description.members().size(); ++r)
      for (const Way way : {Way::ByName, Way::ThroughTable}) tryMember(sandbox, c, r, way);
    if (__lsan_do_recoverable_leak_check() == 0) continue;
    tellCurrent();
    ++leaks;
  }
  std::printf("%llu tries\n", static_cast<unsigned long long>(tries));
  const bool isComplete = reportCalls(stdout);
  return leaks == 0 && isComplete ? 0 : 1;
}
