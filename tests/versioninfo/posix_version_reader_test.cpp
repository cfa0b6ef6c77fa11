// The reader of version resources where it must not trust the file.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/posix/pe_image.h"
#include "platform/posix/version_block.h"
#include "tests/platform/posix_environment.h"
#include "tests/platform/temp_folder.h"
#include "tests/support/memory_bytes.h"
#include "tests/support/pe_builder.h"
#include "tests/support/text_rows.h"
#include "versioninfo/version_info.h"

namespace quendal::platform {
namespace {

using test::Bytes;
using test::PeKind;

constexpr std::size_t kFirstChild = 40 + 52;  // in a block, behind the fixed record

Bytes soundBlock() { return versionBlock(test::englishVersion({{u"CompanyName", u"Works"}})); }

Bytes soundImage(PeKind kind = PeKind::Pe32) { return peImage(kind, {{0x0409, soundBlock()}}); }

std::u16string companyOf(Bytes block) {
  const auto record = versioninfo::versionRecord(VersionBlock(std::move(block)));
  return std::u16string(record.value(VersionString::CompanyName));
}

Bytes firstBytes(const Bytes& bytes, std::size_t size) {
  return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size)};
}

TEST(VersionReaderTest, CutOrSpoiltImagesGiveNoMoreThanTheyHoldAtLittleCost) {
  for (const PeKind kind : {PeKind::Pe32, PeKind::Pe32Plus}) {
    const Bytes image = soundImage(kind);
    test::MemoryBytes whole(image);
    EXPECT_EQ(companyOf(readVersionBlock(whole)), u"Works");
    for (std::size_t at = 0; at < image.size(); ++at) {
      const Bytes cut = firstBytes(image, at);
      test::MemoryBytes rest(cut);
      EXPECT_TRUE(std::u16string_view(u"Works").starts_with(companyOf(readVersionBlock(rest))));
      Bytes spoilt = image;
      spoilt[at] ^= std::byte{0xFF};
      test::MemoryBytes source(spoilt);
      static_cast<void>(companyOf(readVersionBlock(source)));
      EXPECT_LT(source.bytesAsked(), 6 * image.size() + kLongestVersionBlock) << at;
    }
  }
}

TEST(VersionReaderTest, LyingImagesHaveNoVersion) {
  constexpr std::uint32_t kDirectory = 0x80000000;
  constexpr std::size_t kDataEntry = test::kFirstLanguage + 8;
  const struct {
    const char* what;
    std::size_t offset;
    std::uint32_t value;
  } cases[] = {
      {"types lead back to the types", test::kVersionType + 4, kDirectory},
      {"languages lead to a directory", test::kFirstLanguage + 4, kDirectory | 80},
      {"names lie beyond the file", test::kVersionType + 4, 0xFFFFFFFF},
      {"data lies in no section", kDataEntry, 0x00100000},
      {"data lies at the end of memory", kDataEntry, 0xFFFFFFFF},
      {"data is empty", kDataEntry + 4, 0},
      {"file header lies beyond the file", 0x3C, 0xFFFFFFF0},
      {"other kind of optional header", test::kOptionalHeader, 0x0107},
      {"resources of another type", test::kVersionType, 17},
      {"two directories", test::kOptionalHeader + 92, 2},
      {"no resources", test::kOptionalHeader + 96 + 16, 0},
  };
  for (const auto& c : cases) {
    Bytes image = soundImage();
    test::put32(image, c.offset, c.value);
    test::MemoryBytes source(image);
    EXPECT_TRUE(readVersionBlock(source).empty()) << c.what;
  }
}

TEST(VersionReaderTest, LyingLengthsLoseOnlyWhatTheyCover) {
  const struct {
    const char* what;
    std::size_t offset;
    std::uint16_t value;
    bool fixedInfo;
    std::u16string_view company;
  } cases[] = {
      {"nothing", 4, 0, true, u"Works"},
      {"root longer than the block", 0, 0xFFFF, true, u"Works"},
      {"root ends in the fixed record", 0, 60, false, u""},
      {"root ends after the fixed record", 0, kFirstChild, true, u""},
      {"value longer than the root", 2, 0xFFFF, true, u""},
      {"fixed record too short", 2, 51, false, u"Works"},
      {"first child has no length", kFirstChild, 0, true, u""},
      {"first child longer than the root", kFirstChild, 0xFFFF, true, u""},
  };
  for (const auto& c : cases) {
    Bytes block = soundBlock();
    test::put16(block, c.offset, c.value);
    EXPECT_EQ(VersionBlock(block).fixedInfo().has_value(), c.fixedInfo) << c.what;
    EXPECT_EQ(companyOf(block), c.company) << c.what;
  }
}

TEST(VersionReaderTest, NeutralComesBeforeEnglishAndThatBeforeTheFirst) {
  const std::pair<std::vector<std::uint16_t>, std::uint16_t> cases[] = {
      {{0x0465, 0x0409, 0x047A, 0}, 0},
      {{0x047A, 0x0465}, 0x0465},
      {{0x0407, 0x0409, 0x0809}, 0x0409}};
  for (const auto& [languages, expected] : cases) {
    std::vector<test::VersionOfLanguage> versions;
    for (const std::uint16_t language : languages) {
      test::VersionParts parts;
      parts.fixedInfo[1] = language;
      versions.push_back({language, versionBlock(parts)});
    }
    const Bytes image = peImage(PeKind::Pe32, versions);
    test::MemoryBytes source(image);
    const auto info = VersionBlock(readVersionBlock(source)).fixedInfo();
    ASSERT_TRUE(info.has_value());
    EXPECT_EQ(info->structureVersion, expected);
  }
}

TEST(VersionReaderTest, LanguagesHaveEnglishNames) {
  test::forEachPair(
      u"0404=Chinese (Traditional)|0814=Norwegian Nynorsk|0465=Divehi|1400=English|03FE=",
      [](std::u16string_view number, const std::string& name) {
        const int language = std::stoi(toUtf8(number), nullptr, 16);
        EXPECT_EQ(toUtf8(languageName(static_cast<std::uint16_t>(language))), name);
      });
}

TEST(VersionReaderTest, AFolderThatCannotBeListedIsAnError) {
  const TempFolder folder;
  ASSERT_EQ(::chmod(folder.native().c_str(), 0311), 0);
  const Text path(folder.path());
  EXPECT_EQ(inChild([&] {
              return becomeNobody() ? VersionInfo().listFileVersions(TextRef(&path), Object()) : 1;
            }),
            70);
}

TEST(VersionReaderTest, APipeIsNotWaitedFor) {
  const TempFolder folder;
  ASSERT_EQ(::mkfifo((folder.native() / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(readVersionResource(folder / u"pipe"), nullptr);
}

}  // namespace
}  // namespace quendal::platform
