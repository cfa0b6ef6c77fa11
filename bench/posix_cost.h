// What a piece of work costs, found out in a process of its own.
#pragma once

#include <chrono>
#include <functional>

namespace quendal::bench {

struct Cost {
  double milliseconds = 0;
  double mebibytes = 0;  // that the work adds to the peak of the process's memory
};

/// Time and memory of a process, so far.
class CostMeter {
 public:
  CostMeter();
  [[nodiscard]] Cost cost() const;

 private:
  std::chrono::steady_clock::time_point start_;
  double before_;
};

/// Runs `measured` in a process of its own, which ends with it.
Cost inOwnProcess(const std::function<Cost()>& measured);

/// The cost of `work`, on what `prepare` returns; what the work returns is still there at the end.
template <class Prepare, class Work>
Cost costOf(Prepare&& prepare, Work&& work) {
  return inOwnProcess([&] {
    auto prepared = prepare();
    const CostMeter meter;
    [[maybe_unused]] const auto result = work(prepared);
    return meter.cost();
  });
}

}  // namespace quendal::bench
