#include <quendal/automation.h>

#include <cstdlib>

#include "support/threads.h"

namespace quendal::test {
namespace {

DWORD WINAPI run(void* argument) {
  const ApartmentThread apartment;
  (*static_cast<const std::function<void()>*>(argument))();
  return 1;
}

}  // namespace

ApartmentThread::ApartmentThread() { CoInitialize(nullptr); }
ApartmentThread::~ApartmentThread() { CoUninitialize(); }

void onSmallStack(const std::function<void()>& work) {
  HANDLE thread = CreateThread(nullptr, 262144, run, const_cast<std::function<void()>*>(&work),
                               STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
  if (thread == nullptr) std::abort();
  WaitForSingleObject(thread, INFINITE);
  // A thread whose stack overflows can end without the process.
  DWORD result = 0;
  if (!GetExitCodeThread(thread, &result) || result != 1) std::abort();
  CloseHandle(thread);
}

}  // namespace quendal::test
