#include "support/apartment_thread.h"

namespace quendal::test {

ApartmentThread::ApartmentThread() = default;
ApartmentThread::~ApartmentThread() {}

}  // namespace quendal::test
