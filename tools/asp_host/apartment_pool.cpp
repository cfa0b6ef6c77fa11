#include "apartment_pool.h"

#include <quendal/automation.h>

#include <algorithm>
#include <chrono>
#include <climits>
#include <deque>
#include <list>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include "platform/windows/wide.h"

namespace quendal::host {
namespace {

using namespace std::chrono_literals;

constexpr auto kWatchInterval = 50ms;
/// How long a page that was told to stop may take before its apartment is given up.
constexpr auto kGrace = 2s;
constexpr std::size_t kMostGivenUp = 8;

void pumpMessages() noexcept {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

PageResponse refusal(const char* why) {
  PageResponse response;
  response.status = 503;
  response.reason = "Service Unavailable";
  response.failure = why;
  return response;
}
PageResponse tooManyGivenUp() {
  return refusal("Too many pages did not end; the host must be started again.");
}

struct Job {
  std::shared_ptr<PageRun> page;
  ApartmentPool::Answer answer;
  bool stopped = false;  // told to stop; the watcher's own
  bool givenUp = false;  // answered for; guarded by the pool
};

}  // namespace

/// What the threads share.
class ApartmentPool::State : public std::enable_shared_from_this<State> {
 public:
  State(std::size_t threads, std::size_t mostWaiting) : threads_(threads), most_(mostWaiting) {}

  /// Nothing, or why the job is not taken.
  std::optional<PageResponse> add(std::shared_ptr<Job> job) {
    const std::scoped_lock lock(mutex_);
    if (givenUp_ >= kMostGivenUp) return tooManyGivenUp();
    if (waiting_.size() >= most_) return refusal("Too many pages wait already.");
    waiting_.push_back(std::move(job));
    ReleaseSemaphore(wake_.get(), 1, nullptr);
    return std::nullopt;
  }

  /// Keeps as many apartments as may be, and the time-outs of their pages.
  void watch() {
    for (;; std::this_thread::sleep_for(kWatchInterval)) {
      std::list<std::shared_ptr<Job>> running;
      {
        const std::scoped_lock lock(mutex_);
        for (; serving_ < threads_ && givenUp_ < kMostGivenUp; ++serving_)
          std::thread([state = shared_from_this()] { state->serve(); }).detach();
        running = running_;
      }
      for (const auto& job : running) attend(*job);
    }
  }

 private:
  void serve() noexcept {
    if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {
      const std::scoped_lock lock(mutex_);
      --serving_;
      return;
    }
    for (bool isGivenUp = false; !isGivenUp;) {
      const std::shared_ptr<Job> job = nextJob();
      PageResponse response = job->page->execute();
      pumpMessages();
      isGivenUp = !finish(job, std::move(response));
    }
    CoUninitialize();  // another serves in its place
  }

  /// Waits for a job and serves the apartment's messages meanwhile.
  std::shared_ptr<Job> nextJob() {
    const HANDLE wake = wake_.get();
    for (;;) {
      if (MsgWaitForMultipleObjects(1, &wake, FALSE, INFINITE, QS_ALLINPUT) != WAIT_OBJECT_0) {
        pumpMessages();
        continue;
      }
      const std::scoped_lock lock(mutex_);
      if (waiting_.empty()) continue;
      running_.push_back(std::move(waiting_.front()));
      waiting_.pop_front();
      return running_.back();
    }
  }

  /// Answers for a page at its end. False when that was done before, and its apartment given up.
  bool finish(const std::shared_ptr<Job>& job, PageResponse response) {
    {
      const std::scoped_lock lock(mutex_);
      running_.remove(job);
      if (job->givenUp) {
        --givenUp_;
        return false;
      }
    }
    job->answer(std::move(response));
    return true;
  }

  /// Deals with a page whose time may be over.
  void attend(Job& job) {
    const auto deadline = job.page->deadline();
    const auto now = PageRun::Clock::now();
    if (!deadline || now < *deadline) return;
    if (!std::exchange(job.stopped, true)) job.page->stop();
    if (now < *deadline + kGrace) return;

    std::deque<std::shared_ptr<Job>> refused;
    {
      const std::scoped_lock lock(mutex_);
      const bool isRunning =
          std::ranges::any_of(running_, [&](const auto& running) { return running.get() == &job; });
      if (!isRunning || std::exchange(job.givenUp, true)) return;
      --serving_;
      if (++givenUp_ >= kMostGivenUp) refused.swap(waiting_);
    }
    job.answer(job.page->timedOut());
    for (const auto& each : refused) each->answer(tooManyGivenUp());
  }

  const std::size_t threads_;
  const std::size_t most_;
  const platform::FileHandle wake_{CreateSemaphoreW(nullptr, 0, LONG_MAX, nullptr)};
  std::mutex mutex_;  // for what follows
  std::deque<std::shared_ptr<Job>> waiting_;
  std::list<std::shared_ptr<Job>> running_;
  std::size_t serving_ = 0;  // apartments that take jobs
  std::size_t givenUp_ = 0;  // apartments whose pages have not ended
};

ApartmentPool::ApartmentPool(std::size_t threads, std::size_t mostWaiting)
    : state_(std::make_shared<State>(threads, mostWaiting)) {
  std::thread([state = state_] { state->watch(); }).detach();
}

void ApartmentPool::run(std::shared_ptr<PageRun> page, Answer answer) {
  const auto job = std::make_shared<Job>(Job{std::move(page), std::move(answer)});
  if (auto refused = state_->add(job)) job->answer(std::move(*refused));
}

}  // namespace quendal::host
