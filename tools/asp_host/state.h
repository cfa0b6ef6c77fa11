// What outlives a page: the contents of the application and of each session.
#pragma once

#include <chrono>
#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "base/name_order.h"
#include "page_object.h"

namespace quendal::host {

/// Named values that pages on all threads share.
struct Contents {
  std::mutex mutex;
  std::map<std::u16string, Variant, NameOrder> values;
};

/// The application's lock: held by one page at a time, whose later Locks change nothing.
class PageLock {
 public:
  /// Waits until `stop` is set, then raises 5.
  void lock(const void* page, const StopFlag& stop);
  void unlock(const void* page);

 private:
  std::mutex mutex_;
  std::condition_variable freed_;
  const void* owner_ = nullptr;
};

struct SessionState {
  std::string key;      // of the cookie, unguessable
  std::int32_t id = 0;  // as the page sees it
  Contents contents;
};

/// The sessions of a site, kept for twenty minutes after their last page.
class Sessions {
 public:
  /// The session of a key, or a new one.
  [[nodiscard]] std::shared_ptr<SessionState> find(std::string_view key);

 private:
  using Clock = std::chrono::steady_clock;
  struct Kept {
    std::shared_ptr<SessionState> session;
    Clock::time_point lastUsed;
  };
  std::mutex mutex_;
  std::map<std::string, Kept, std::less<>> kept_;
  std::int32_t lastId_ = 0;
};

/// What all pages of a site share.
struct SharedState {
  Contents application;
  PageLock applicationLock;
  Sessions sessions;
};

[[nodiscard]] Object makeSession(const StopFlag& stop, std::shared_ptr<SessionState> session);
/// `page` identifies the page for the lock.
[[nodiscard]] Object makeApplication(const StopFlag& stop, std::shared_ptr<SharedState> shared,
                                     const void* page);

}  // namespace quendal::host
