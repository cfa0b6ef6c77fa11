// An environment variable for the length of a test.
#pragma once

#include <stdlib.h>

#include <optional>
#include <string>

namespace quendal::platform {

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
