#include <quendal/automation.h>

#include "bench/row.h"

int main() {
  if (FAILED(CoInitialize(nullptr))) return 1;
  quendal::bench::run();
  CoUninitialize();
}
