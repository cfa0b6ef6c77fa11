#include "bench/posix_cost.h"

#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <string>

namespace quendal::bench {
namespace {

double kilobytes(const std::string& field) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.starts_with(field)) return std::strtod(line.c_str() + field.size(), nullptr);
  return 0;
}

}  // namespace

CostMeter::CostMeter() {
  ::malloc_trim(0);                               // no freed memory that the work could use again
  std::ofstream("/proc/self/clear_refs") << "5";  // the peak starts afresh
  before_ = kilobytes("VmRSS:");
  start_ = std::chrono::steady_clock::now();
}

Cost CostMeter::cost() const {
  const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start_;
  return {taken.count(), (kilobytes("VmHWM:") - before_) / 1024};
}

Cost inOwnProcess(const std::function<Cost()>& measured) {
  int ends[2];
  if (::pipe(ends) != 0) std::abort();
  const pid_t child = ::fork();
  if (child == 0) {
    const Cost cost = measured();
    ::_exit(::write(ends[1], &cost, sizeof cost) == sizeof cost ? 0 : 1);
  }
  ::close(ends[1]);
  Cost cost;
  if (::read(ends[0], &cost, sizeof cost) != sizeof cost) std::abort();
  ::close(ends[0]);
  ::waitpid(child, nullptr, 0);
  return cost;
}

}  // namespace quendal::bench
