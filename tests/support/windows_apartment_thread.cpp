#include <quendal/automation.h>

#include "support/apartment_thread.h"

namespace quendal::test {

ApartmentThread::ApartmentThread() { CoInitialize(nullptr); }
ApartmentThread::~ApartmentThread() { CoUninitialize(); }

}  // namespace quendal::test
