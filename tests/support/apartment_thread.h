// The automation runtime of a thread.
#pragma once

namespace quendal::test {

/// While it lives, the calling thread is an apartment in which objects can be created.
class ApartmentThread {
 public:
  ApartmentThread();
  ApartmentThread(const ApartmentThread&) = delete;
  ApartmentThread& operator=(const ApartmentThread&) = delete;
  ~ApartmentThread();
};

}  // namespace quendal::test
