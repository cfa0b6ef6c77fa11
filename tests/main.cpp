// The test program. Called with `--write-log` it is one of several processes that write to one
// log: see logging/processes_test.cpp.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string_view>

#include "support/log_writer.h"
#include "support/threads.h"

int main(int argc, char** argv) {
  const quendal::test::ApartmentThread apartment;
  if (argc > 1 && std::string_view(argv[1]) == "--write-log") {
    if (argc != 5) return 2;
    return quendal::test::writeLog(argv[2], std::atoi(argv[3]), std::atoi(argv[4]));
  }
  quendal::test::testProgram = std::filesystem::absolute(argv[0]).string();
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
