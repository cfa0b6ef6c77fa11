// Reading the version of a 1 GB sparse file against a 100 KB one with the same resource.
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "bench/row.h"
#include "bench/scratch_folder.h"
#include "tests/support/pe_builder.h"
#include "versioninfo/version_record.h"

namespace quendal::bench {

void run() {
  const ScratchFolder folder;
  test::VersionParts parts;
  parts.translations = {0x04B00409};
  parts.tables = {{u"040904B0", {{u"CompanyName", u"Company"}, {u"ProductVersion", u"1.2.3"}}}};
  const test::Bytes image =
      test::peImage(test::PeKind::Pe32Plus, {{0x0409, test::versionBlock(parts)}});
  const auto imageOf = [&](const char* name, std::uintmax_t size) {
    const std::filesystem::path path = folder / name;
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(image.data()),
               static_cast<std::streamsize>(image.size()));
    std::filesystem::resize_file(path, size);
    return path.u16string();
  };
  const std::u16string large = imageOf("large.dll", std::uintmax_t{1} << 30);
  const std::u16string small = imageOf("small.dll", 100 * 1024);
  const auto read = [&](const std::u16string& path) {
    if (!versioninfo::readVersionRecord(path).available) std::abort();
  };
  constexpr int kReads = 500;
  compare(
      "version read, 1 GB (100 KB)", kReads, [&] { read(large); }, [&] { read(small); });
}

}  // namespace quendal::bench
