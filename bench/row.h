// A benchmark, and one row of it: ours and the peer's, measured in the same run.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <string_view>

namespace quendal::bench {

/// What a benchmark program does; each has one. Runs in an apartment.
void run();

/// Prints name, both figures (times of one unit in the same unit, or sizes) and ours / peer.
inline void row(std::string_view name, double ours, double peer) {
  std::printf("%-54.*s %14.3f %14.3f %8.3f\n", static_cast<int>(name.size()), name.data(), ours,
              peer, peer == 0 ? 0.0 : ours / peer);
  std::fflush(stdout);
}

/// Best times of both sides of a row, in microseconds.
struct Times {
  double ours = 1e300;
  double peer = 1e300;
};

/// Microseconds of `count` calls. What a call returns goes after its time is taken.
template <class Work>
double timeOf(int count, Work& work) {
  using Clock = std::chrono::steady_clock;
  std::chrono::duration<double, std::micro> taken{};
  if constexpr (std::is_void_v<decltype(work())>) {
    const auto start = Clock::now();
    for (int i = 0; i < count; ++i) work();
    taken = Clock::now() - start;
  } else {
    for (int i = 0; i < count; ++i) {
      const auto start = Clock::now();
      [[maybe_unused]] const auto result = work();
      taken += Clock::now() - start;
    }
  }
  return taken.count();
}

/// Microseconds of one call, the best of several rounds of `count` calls.
template <class Work>
double microseconds(int count, Work&& work, int rounds = 7) {
  double best = 1e300;
  for (int round = 0; round < rounds; ++round) best = std::min(best, timeOf(count, work) / count);
  return best;
}

/// The two sides of a row in turns, so that both meet the same machine.
template <class Ours, class Peer>
Times timesOf(int count, Ours&& ours, Peer&& peer, int rounds = 7) {
  Times best;
  for (int round = 0; round < rounds; ++round) {
    best.ours = std::min(best.ours, microseconds(count, ours, 1));
    best.peer = std::min(best.peer, microseconds(count, peer, 1));
  }
  return best;
}

/// A row of microseconds of one call.
template <class Ours, class Peer>
void compare(std::string_view name, int count, Ours&& ours, Peer&& peer, int rounds = 7) {
  const Times times = timesOf(count, ours, peer, rounds);
  row(name, times.ours, times.peer);
}

}  // namespace quendal::bench
