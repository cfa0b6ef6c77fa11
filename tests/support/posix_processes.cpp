#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>

#include "support/log_writer.h"

extern char** environ;

namespace quendal::test {

int runTogether(const std::vector<std::vector<std::string>>& argumentLists) {
  std::vector<pid_t> children;
  int status = 0;
  for (const std::vector<std::string>& arguments : argumentLists) {
    std::string program = "/proc/self/exe";
    std::vector<char*> argv = {program.data()};
    for (const std::string& argument : arguments)
      argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    pid_t child = 0;
    if (posix_spawn(&child, program.c_str(), nullptr, nullptr, argv.data(), environ) == 0)
      children.push_back(child);
    else
      status = 1;
  }
  for (const pid_t child : children) {
    int ended = 0;
    waitpid(child, &ended, 0);
    status = std::max(status, WIFEXITED(ended) ? WEXITSTATUS(ended) : 1);
  }
  return status;
}

}  // namespace quendal::test
