// The threads on which pages run: a bounded number of single-threaded apartments.
#pragma once

#include <functional>
#include <memory>

#include "page_run.h"

namespace quendal::host {

/// A page that outruns its time-out is told to stop. If it does not within two seconds, it is
/// answered for, and its apartment is given up: another takes its place, and the old thread goes on
/// until its page ends or the program does. While eight apartments are given up no page is run.
class ApartmentPool {
 public:
  /// Called once for each page, from any thread.
  using Answer = std::function<void(PageResponse)>;

  ApartmentPool(std::size_t threads, std::size_t mostWaiting);

  /// Runs a page as soon as an apartment is free. Where that cannot be, the answer is 503, with the
  /// reason as its failure.
  void run(std::shared_ptr<PageRun> page, Answer answer);

 private:
  class State;
  std::shared_ptr<State> state_;  // shared with the threads, which go on until the program ends
};

}  // namespace quendal::host
