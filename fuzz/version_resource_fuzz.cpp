// Reads a version record out of arbitrary bytes, by the way that a file takes.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

#include "platform/posix/pe_image.h"
#include "platform/posix/version_block.h"
#include "tests/support/memory_bytes.h"
#include "versioninfo/version_record.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quendal;
  const auto bytes = std::as_bytes(std::span(data, size));
  // The whole input as an image, and as a block of its own: a fuzzer rarely gets through the
  // headers with its block intact.
  test::MemoryBytes image(bytes);
  auto block = platform::readVersionBlock(image);
  (void)versioninfo::versionRecord(platform::VersionBlock(std::move(block)));
  block.assign(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(
                                                  std::min(size, platform::kLongestVersionBlock)));
  (void)versioninfo::versionRecord(platform::VersionBlock(std::move(block)));
  return 0;
}
