// Other processes and environments than the test's own.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <optional>
#include <string>

namespace quendal::platform {

/// What an action gives, a number or enumerator below 256, in a process of its own, in which it may
/// change what belongs to a process.
template <typename Action>
auto inChild(Action action) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(static_cast<int>(action()));
  int status = -1;
  EXPECT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status));
  return static_cast<decltype(action())>(WEXITSTATUS(status));
}

/// Gives up the rights of root in a child, whom those of files do not bind.
inline bool becomeNobody() {
  constexpr uid_t kNobody = 65534;
  return ::geteuid() != 0 || ::setuid(kNobody) == 0;
}

/// Whether a check holds in a process of its own.
template <typename Check>
bool holdsInChild(Check check) {
  return inChild([&check] { return check() ? 0 : 1; }) == 0;
}

/// An environment variable while the object lives.
class EnvironmentChange {
 public:
  EnvironmentChange(const char* name, const std::string& value) : name_(name) {
    if (const char* const old = getenv(name)) old_ = old;
    setenv(name, value.c_str(), 1);
  }
  EnvironmentChange(const EnvironmentChange&) = delete;
  ~EnvironmentChange() { old_ ? setenv(name_, old_->c_str(), 1) : unsetenv(name_); }

 private:
  const char* name_;
  std::optional<std::string> old_;
};

}  // namespace quendal::platform
