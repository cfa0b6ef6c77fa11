#include "apartment_pool.h"

#include <process.h>

#include <algorithm>
#include <climits>
#include <utility>

namespace quendal::host {
namespace {

using namespace std::chrono_literals;

constexpr auto kWatchInterval = 50ms;
/// How long a page that was told to stop may take before its thread is given up.
constexpr auto kGrace = 2s;

std::uintptr_t instructionOf(const CONTEXT& context) noexcept {
#ifdef _WIN64
  return context.Rip;
#else
  return context.Eip;
#endif
}

/// Ends a thread while `isIt` holds and it is in the engines' own code, where it has no lock of the
/// process. Returns false when it was elsewhere just now.
template <class Condition>
bool endInside(HANDLE thread, const std::vector<ModuleRange>& modules, Condition isIt) noexcept {
  // Nothing may be allocated or locked while the thread stands still: it may hold the lock.
  if (SuspendThread(thread) == static_cast<DWORD>(-1)) return false;
  CONTEXT context{};
  context.ContextFlags = CONTEXT_CONTROL;
  bool inside = false;
  if (isIt() && GetThreadContext(thread, &context)) {
    const std::uintptr_t instruction = instructionOf(context);
    for (const ModuleRange& module : modules)
      inside = inside || (instruction >= module.start && instruction < module.end);
  }
  if (inside) TerminateThread(thread, 1);
  ResumeThread(thread);
  return inside;
}

void pumpMessages() noexcept {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

}  // namespace

struct ApartmentPool::Job {
  std::shared_ptr<PageRun> page;
  Answer answer;
  std::atomic<bool> answered = false;
  bool stopped = false;  // told to stop

  void finish(PageResponse response) {
    if (!answered.exchange(true)) answer(std::move(response));
  }
};

struct ApartmentPool::Worker {
  ApartmentPool* pool = nullptr;
  platform::OwnedHandle<platform::CloseFile> thread{nullptr};
  std::shared_ptr<Job> job;  // guarded by the pool
  bool givenUp = false;      // guarded by the pool: another works in its place
  bool ended = false;        // guarded by the pool
  /// The job whose page runs just now, to be looked at without a lock.
  std::atomic<const Job*> running = nullptr;

  [[nodiscard]] bool isOver() const noexcept { return ended || givenUp; }
};

ApartmentPool::ApartmentPool(std::size_t threads, std::size_t mostWaiting)
    : mostWaiting_(mostWaiting), wake_(CreateSemaphoreW(nullptr, 0, LONG_MAX, nullptr)) {
  for (std::size_t i = 0; i < threads; ++i) startWorker();
  watcher_ = std::thread([this] { watch(); });
}

ApartmentPool::~ApartmentPool() {
  {
    std::unique_lock lock(mutex_);
    closing_ = true;
    ReleaseSemaphore(wake_.get(), static_cast<LONG>(workers_.size()), nullptr);
    ended_.wait(lock, [this] {
      return std::ranges::all_of(workers_, [](const auto& worker) { return worker->isOver(); });
    });
  }
  watcher_.join();
  // What is stuck outside the engines would keep the program from ending.
  for (const auto& worker : workers_)
    if (!worker->ended) TerminateThread(worker->thread.get(), 1);
}

bool ApartmentPool::run(std::shared_ptr<PageRun> page, Answer answer) {
  auto job = std::make_shared<Job>();
  job->page = std::move(page);
  job->answer = std::move(answer);
  {
    const std::scoped_lock lock(mutex_);
    if (closing_ || waiting_.size() >= mostWaiting_) return false;
    waiting_.push_back(std::move(job));
  }
  ReleaseSemaphore(wake_.get(), 1, nullptr);
  return true;
}

void ApartmentPool::startWorker() {
  auto worker = std::make_shared<Worker>();
  worker->pool = this;
  // The thread waits for the lock until the worker is in the list.
  const std::scoped_lock lock(mutex_);
  if (closing_) return;
  workers_.push_back(worker);
  const auto handle = _beginthreadex(nullptr, 0, &threadMain, worker.get(), 0, nullptr);
  worker->thread = platform::OwnedHandle<platform::CloseFile>(reinterpret_cast<HANDLE>(handle));
  worker->ended = handle == 0;
}

unsigned __stdcall ApartmentPool::threadMain(void* argument) noexcept {
  auto& worker = *static_cast<Worker*>(argument);
  if (SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {
    worker.pool->work(worker);
    CoUninitialize();
  }
  ApartmentPool& pool = *worker.pool;
  const std::scoped_lock lock(pool.mutex_);
  worker.ended = true;
  pool.ended_.notify_all();
  return 0;
}

void ApartmentPool::work(Worker& worker) {
  while (const std::shared_ptr<Job> job = nextJob(worker)) {
    worker.running = job.get();
    PageResponse response = job->page->execute();
    worker.running = nullptr;
    job->finish(std::move(response));
    pumpMessages();
    const std::scoped_lock lock(mutex_);
    worker.job.reset();
    if (worker.givenUp) return;
  }
}

/// Waits for a job and serves the apartment's messages meanwhile. Null at the pool's end.
std::shared_ptr<ApartmentPool::Job> ApartmentPool::nextJob(Worker& worker) {
  const HANDLE wake = wake_.get();
  for (;;) {
    const DWORD woken = MsgWaitForMultipleObjects(1, &wake, FALSE, INFINITE, QS_ALLINPUT);
    if (woken != WAIT_OBJECT_0) {
      pumpMessages();
      continue;
    }
    const std::scoped_lock lock(mutex_);
    if (!waiting_.empty()) {
      worker.job = std::move(waiting_.front());
      waiting_.pop_front();
      return worker.job;
    }
    if (closing_) return nullptr;
  }
}

void ApartmentPool::watch() {
  for (;;) {
    std::vector<std::shared_ptr<Worker>> workers;
    {
      std::unique_lock lock(mutex_);
      std::erase_if(workers_, [](const auto& worker) { return worker->ended && worker->givenUp; });
      const bool allOver =
          std::ranges::all_of(workers_, [](const auto& worker) { return worker->isOver(); });
      if (closing_ && allOver) return;
      workers = workers_;
    }
    for (const auto& worker : workers)
      if (attend(*worker)) startWorker();
    std::this_thread::sleep_for(kWatchInterval);
  }
}

bool ApartmentPool::attend(Worker& worker) {
  std::shared_ptr<Job> job;
  {
    const std::scoped_lock lock(mutex_);
    job = worker.job;
  }
  const auto deadline = job == nullptr ? std::nullopt : job->page->deadline();
  if (!deadline || PageRun::Clock::now() < *deadline) return false;
  if (!std::exchange(job->stopped, true)) job->page->stop();
  if (PageRun::Clock::now() < *deadline + kGrace) return false;

  const bool isFirst = !worker.givenUp;
  if (isFirst) {
    job->finish(job->page->timedOut());
    const std::scoped_lock lock(mutex_);
    worker.givenUp = true;
    ended_.notify_all();
  }
  if (endInside(worker.thread.get(), job->page->engineModules(),
                [&] { return worker.running == job.get(); })) {
    job->page->abandon();
    const std::scoped_lock lock(mutex_);
    worker.job.reset();
    worker.ended = true;
    ended_.notify_all();
  }
  return isFirst;
}

}  // namespace quendal::host
