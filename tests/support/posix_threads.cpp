#include <pthread.h>

#include <cstdlib>

#include "support/threads.h"

namespace quendal::test {

ApartmentThread::ApartmentThread() = default;
ApartmentThread::~ApartmentThread() {}

void onSmallStack(const std::function<void()>& work) {
  const auto run = [](void* argument) -> void* {
    (*static_cast<const std::function<void()>*>(argument))();
    return nullptr;
  };
  pthread_attr_t attributes;
  pthread_t thread;
  auto* argument = const_cast<std::function<void()>*>(&work);
  if (pthread_attr_init(&attributes) != 0 || pthread_attr_setstacksize(&attributes, 262144) != 0 ||
      pthread_create(&thread, &attributes, run, argument) != 0)
    std::abort();
  pthread_attr_destroy(&attributes);
  pthread_join(thread, nullptr);
}

}  // namespace quendal::test
