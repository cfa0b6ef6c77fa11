#include <quendal/automation.h>

#include <algorithm>

#include "support/log_writer.h"

namespace quendal::test {

int runTogether(const std::vector<std::vector<std::string>>& argumentLists) {
  char program[MAX_PATH];
  GetModuleFileNameA(nullptr, program, MAX_PATH);
  std::vector<HANDLE> children;
  DWORD status = 0;
  for (const std::vector<std::string>& arguments : argumentLists) {
    std::string line = "\"" + std::string(program) + "\"";
    for (const std::string& argument : arguments) line += " \"" + argument + "\"";
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION child{};
    if (CreateProcessA(program, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                       &child) == FALSE) {
      status = 1;
      continue;
    }
    CloseHandle(child.hThread);
    children.push_back(child.hProcess);
  }
  for (const HANDLE child : children) {
    DWORD ended = 1;
    WaitForSingleObject(child, INFINITE);
    GetExitCodeProcess(child, &ended);
    CloseHandle(child);
    status = std::max(status, ended);
  }
  return static_cast<int>(status);
}

}  // namespace quendal::test
