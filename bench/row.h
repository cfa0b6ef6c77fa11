// One row of a benchmark: ours and the peer's, measured in the same run.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <string_view>

namespace quendal::bench {

/// Prints name, both figures (times of one unit in the same unit, or sizes) and ours / peer.
inline void row(std::string_view name, double ours, double peer) {
  std::printf("%-44.*s %14.3f %14.3f %8.3f\n", static_cast<int>(name.size()), name.data(), ours,
              peer, peer == 0 ? 0.0 : ours / peer);
  std::fflush(stdout);
}

/// Microseconds of one call, the best of several rounds of `count` calls.
template <class Work>
double microseconds(int count, Work&& work, int rounds = 7) {
  using Clock = std::chrono::steady_clock;
  double best = 1e300;
  for (int round = 0; round < rounds; ++round) {
    const auto start = Clock::now();
    for (int i = 0; i < count; ++i) work();
    const std::chrono::duration<double, std::micro> taken = Clock::now() - start;
    best = std::min(best, taken.count() / count);
  }
  return best;
}

/// The two sides of a row in turns, so that both meet the same machine.
template <class Ours, class Peer>
void compare(std::string_view name, int count, Ours&& ours, Peer&& peer, int rounds = 7) {
  double bestOurs = 1e300, bestPeer = 1e300;
  for (int round = 0; round < rounds; ++round) {
    bestOurs = std::min(bestOurs, microseconds(count, ours, 1));
    bestPeer = std::min(bestPeer, microseconds(count, peer, 1));
  }
  row(name, bestOurs, bestPeer);
}

}  // namespace quendal::bench
