#include "apartment_pool.h"

#include <quendal/automation.h>

#include <algorithm>
#include <chrono>
#include <climits>
#include <condition_variable>
#include <deque>
#include <list>
#include <mutex>
#include <optional>
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

}  // namespace

struct ApartmentPool::Job {
  std::shared_ptr<PageRun> page;
  Answer answer;
  bool stopped = false;  // told to stop; the watcher's own
  bool givenUp = false;  // answered for; guarded by the pool
};

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

  /// Starts as many apartments as are missing and may be.
  void startWorkers() {
    const std::scoped_lock lock(mutex_);
    for (; serving_ < threads_ && givenUp_ < kMostGivenUp && !closing_; ++serving_)
      std::thread([state = shared_from_this()] { state->serve(); }).detach();
  }

  void close() {
    const std::scoped_lock lock(mutex_);
    closing_ = true;
    ReleaseSemaphore(wake_.get(), static_cast<LONG>(threads_), nullptr);
  }

  /// Until the pool is closed and its apartments have ended or been given up.
  void watch() {
    for (;;) {
      std::list<std::shared_ptr<Job>> running;
      {
        std::unique_lock lock(mutex_);
        if (ended_.wait_for(lock, kWatchInterval, [this] { return closing_ && serving_ == 0; }))
          return;
        running = running_;
      }
      for (const auto& job : running) attend(*job);
      startWorkers();
    }
  }

 private:
  void serve() noexcept {
    if (SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {
      while (const std::shared_ptr<Job> job = nextJob()) {
        PageResponse response = job->page->execute();
        pumpMessages();
        if (!finish(job, std::move(response))) {
          CoUninitialize();
          return;  // another serves in its place
        }
      }
      CoUninitialize();
    }
    const std::scoped_lock lock(mutex_);
    --serving_;
    ended_.notify_all();
  }

  /// Waits for a job and serves the apartment's messages meanwhile. Null at the pool's end.
  std::shared_ptr<Job> nextJob() {
    const HANDLE wake = wake_.get();
    for (;;) {
      if (MsgWaitForMultipleObjects(1, &wake, FALSE, INFINITE, QS_ALLINPUT) != WAIT_OBJECT_0) {
        pumpMessages();
        continue;
      }
      const std::scoped_lock lock(mutex_);
      if (waiting_.empty()) {
        if (closing_) return nullptr;
        continue;
      }
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
  std::condition_variable ended_;
  std::deque<std::shared_ptr<Job>> waiting_;
  std::list<std::shared_ptr<Job>> running_;
  std::size_t serving_ = 0;  // apartments that take jobs
  std::size_t givenUp_ = 0;  // apartments whose pages have not ended
  bool closing_ = false;
};

ApartmentPool::ApartmentPool(std::size_t threads, std::size_t mostWaiting)
    : state_(std::make_shared<State>(threads, mostWaiting)),
      watcher_([state = state_] { state->watch(); }) {
  state_->startWorkers();
}

ApartmentPool::~ApartmentPool() {
  state_->close();
  watcher_.join();
}

void ApartmentPool::run(std::shared_ptr<PageRun> page, Answer answer) {
  const auto job = std::make_shared<Job>(Job{std::move(page), std::move(answer)});
  if (auto refused = state_->add(job)) job->answer(std::move(*refused));
}

}  // namespace quendal::host
