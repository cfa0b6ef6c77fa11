// One run of a page: its objects, its script and what it answers.
#pragma once

#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>
#include <vector>

#include "http_message.h"
#include "request.h"
#include "response.h"
#include "script_engine.h"
#include "state.h"

namespace quendal::host {

class PageRun {
 public:
  using Clock = std::chrono::steady_clock;

  PageRun(PageRequest request, PagePlace place, std::shared_ptr<SharedState> shared,
          std::chrono::seconds scriptTimeout);

  /// Runs the page, in a single-threaded apartment. Its objects raise when they are used later.
  [[nodiscard]] PageResponse execute();

  // The rest may be called from any thread.

  /// When the page must be at its end; none while it is not running.
  [[nodiscard]] std::optional<Clock::time_point> deadline() const;
  /// Makes the page's objects raise from now on, and asks its engines to end.
  void stop() noexcept;
  /// The answer for a page that took too long. Gives back what the page holds of the site.
  [[nodiscard]] PageResponse timedOut();

 private:
  [[nodiscard]] ParsedPage parse() const;
  void runScripts(const ParsedPage& page, const Object& context);
  /// What the client says; empty for a client without a session.
  [[nodiscard]] std::string sessionKey() const;
  [[nodiscard]] Object makeContext(const ParsedPage& page);
  [[nodiscard]] Object makeServer();
  [[nodiscard]] Object createObject(std::u16string_view programId);
  void endObjects() noexcept;
  void dropEngines() noexcept;
  [[nodiscard]] static PageResponse failed(std::string why);
  [[nodiscard]] std::string fileName() const;

  const PageRequest request_;
  const PagePlace place_;
  const std::shared_ptr<SharedState> shared_;
  const std::shared_ptr<std::atomic<bool>> stop_ = std::make_shared<std::atomic<bool>>(false);
  const std::shared_ptr<ResponseState> response_ = std::make_shared<ResponseState>();
  std::shared_ptr<SessionState> session_;
  bool ended_ = false;  // by the page itself
  Object context_;
  std::vector<Object> created_;

  mutable std::mutex mutex_;  // for what follows
  std::chrono::seconds timeout_;
  std::optional<Clock::time_point> started_;
  std::vector<std::unique_ptr<ScriptEngine>> engines_;
};

}  // namespace quendal::host
