// Other environments than the process has.
#pragma once

#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <optional>
#include <string>

namespace quendal::platform {

/// Whether a check holds in a process of its own, which may change what belongs to a process.
template <typename Check>
bool holdsInChild(Check check) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(check() ? 0 : 1);
  int status = -1;
  return ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// An environment variable while the object lives.
class EnvironmentChange {
 public:
  EnvironmentChange(const char* name, const std::string& value) : name_(name) {
    if (const char* const old = getenv(name)) old_ = old;
    setenv(name, value.c_str(), 1);
  }
  EnvironmentChange(const EnvironmentChange&) = delete;
  EnvironmentChange& operator=(const EnvironmentChange&) = delete;
  ~EnvironmentChange() { old_ ? setenv(name_, old_->c_str(), 1) : unsetenv(name_); }

 private:
  const char* name_;
  std::optional<std::string> old_;
};

}  // namespace quendal::platform
