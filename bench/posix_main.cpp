#include "bench/row.h"

int main() { quendal::bench::run(); }
