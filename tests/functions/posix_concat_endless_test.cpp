// A builder without capacity, in a process that a timer ends.
#include <gtest/gtest.h>

#include <sys/time.h>
#include <csignal>

#include "core/dispatch.h"
#include "functions/concat.h"

namespace quendal::test {
namespace {

TEST(ConcatDeathTest, WithoutCapacityAppendingDoesNotReturn) {
  const auto append = [] {
    const Object builder = Owned<Concat>::make().object();
    builder.call(u"TrimToSize");
    itimerval soon{};
    soon.it_value.tv_usec = 300'000;
    setitimer(ITIMER_REAL, &soon, nullptr);
    builder.call(u"Append", u"x");
  };
  EXPECT_EXIT(append(), ::testing::KilledBySignal(SIGALRM), "");
}

}  // namespace
}  // namespace quendal::test
