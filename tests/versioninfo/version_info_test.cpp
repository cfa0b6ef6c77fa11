// `VersionInfo` as scripts and reports use it.
#include <gtest/gtest.h>

#include <filesystem>

#include "core/dictionary.h"
#include "core/dispatch.h"
#include "support/pe_builder.h"
#include "tests/platform/temp_folder.h"
#include "versioninfo/version_info.h"

namespace quendal {
namespace {

class VersionInfoTest : public ::testing::Test {
 protected:
  void createImage(const std::u16string& path, std::u16string version) {
    const test::Bytes image =
        test::englishImage({{u"CompanyName", u"Company"}, {u"ProductVersion", version}});
    ASSERT_EQ(platform::createFile(path, image), platform::FileError::None);
  }

  std::int32_t listVersions(const std::u16string& folder, const Object& dictionary) {
    return info_.call(u"V7000_ListFileVersionsAsDictionary", folder, dictionary).lVal;
  }

  platform::TempFolder folder_;
  Object info_ = Owned<VersionInfo>::make().object();
};

TEST_F(VersionInfoTest, APathIsReadAtOnceAndAnotherOneForgetsIt) {
  createImage(folder_ / u"one.dll", u"1.2.3");
  info_.put(u"FullPathName", folder_ / u"one.dll");
  EXPECT_EQ(info_.get(u"Available").boolVal, -1);
  EXPECT_EQ(textOf(info_.get(u"ProductVersion")), u"1.2.3");
  EXPECT_EQ(textOf(info_.get(u"PredefinedName", std::int32_t{2})), u"Company Name");
  EXPECT_EQ(textOf(info_.get(u"PredefinedName", std::int32_t{14})), u"LegalTrademarks2");
  for (const std::int32_t outside : {-1, 15}) {
    EXPECT_EQ(textOf(info_.get(u"PredefinedName", outside)), u"");
    EXPECT_EQ(textOf(info_.get(u"PredefinedValue", outside)), u"");
  }
  info_.put(u"FullPathName", u"");  // cannot be resolved: nothing changes
  EXPECT_EQ(textOf(info_.get(u"ProductVersion")), u"1.2.3");
  info_.put(u"FullPathName", folder_ / u"missing.dll");
  EXPECT_EQ(info_.get(u"Available").boolVal, 0);
  EXPECT_EQ(textOf(info_.get(u"ProductVersion")), u"");
}

TEST_F(VersionInfoTest, AFoldersFilesWithAResourceAreListed) {
  createImage(folder_ / u"b.dll", u"2.0");
  ASSERT_EQ(platform::createFile(folder_ / u"c.txt", {}), platform::FileError::None);
  ASSERT_EQ(platform::createFolder(folder_ / u"d.dll"), platform::FileError::None);
  const Dictionary found = Dictionary::create();
  found.add(u"b.dll", u"old");
  EXPECT_EQ(listVersions(folder_ / u"", found.object()), 0);
  EXPECT_EQ(found.count(), 1);
  EXPECT_EQ(textOf(found.item(u"b.dll")), u"2.0");
  EXPECT_EQ(listVersions(folder_ / u"nowhere\u4E2D", found.object()), -1);
  EXPECT_EQ(listVersions(folder_.path(), Object()), 91);  // nothing to put the entries into
  // Windows-1252 lacks this character: whatever can be read there, the folder is one.
  ASSERT_EQ(platform::createFolder(folder_ / u"\u4E2D"), platform::FileError::None);
  createImage(folder_ / u"\u4E2D\\c.dll", u"3.0");
  EXPECT_EQ(listVersions(folder_ / u"\u4E2D", found.object()), 0);
}

// Where there are no drives it is a folder of that name.
TEST_F(VersionInfoTest, ADriveAloneIsItsCurrentFolder) {
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(folder_.native());
  EXPECT_EQ(platform::createFolder(u"C:"), platform::FileError::None);
  createImage(platform::absolutePath(u"C:") + u"\\here.dll", u"4.0");
  const Dictionary found = Dictionary::create();
  EXPECT_EQ(listVersions(u"C:", found.object()), 0);
  EXPECT_EQ(textOf(found.item(u"here.dll")), u"4.0");
  std::filesystem::current_path(before);
}

}  // namespace
}  // namespace quendal
