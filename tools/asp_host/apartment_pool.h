// The threads on which pages run: a bounded number of single-threaded apartments.
#pragma once

#include <quendal/automation.h>

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "page_run.h"
#include "platform/windows/wide.h"

namespace quendal::host {

class ApartmentPool {
 public:
  /// Called once for each page, from any thread.
  using Answer = std::function<void(PageResponse)>;

  ApartmentPool(std::size_t threads, std::size_t mostWaiting);
  /// Waits for running pages, at most for their time-outs.
  ~ApartmentPool();
  ApartmentPool(const ApartmentPool&) = delete;
  ApartmentPool& operator=(const ApartmentPool&) = delete;

  /// Runs a page as soon as an apartment is free. False when too many wait already.
  [[nodiscard]] bool run(std::shared_ptr<PageRun> page, Answer answer);

 private:
  struct Job;
  struct Worker;

  static unsigned __stdcall threadMain(void* worker) noexcept;
  void startWorker();
  void work(Worker& worker);
  std::shared_ptr<Job> nextJob(Worker& worker);
  void watch();
  /// Deals with a page whose time is over. True when its worker must be replaced.
  bool attend(Worker& worker);

  const std::size_t mostWaiting_;
  std::mutex mutex_;
  std::condition_variable ended_;
  std::deque<std::shared_ptr<Job>> waiting_;
  std::vector<std::shared_ptr<Worker>> workers_;
  bool closing_ = false;
  platform::OwnedHandle<platform::CloseFile> wake_;  // counts the waiting jobs
  std::thread watcher_;
};

}  // namespace quendal::host
