// `VersionInfo` as scripts and reports use it.
#include <gtest/gtest.h>

#include "core/dictionary.h"
#include "core/dispatch.h"
#include "support/pe_builder.h"
#include "tests/platform/temp_folder.h"
#include "versioninfo/version_info.h"

namespace quendal {
namespace {

class VersionInfoTest : public ::testing::Test {
 protected:
  void createImage(std::u16string_view name, std::u16string version) {
    test::VersionParts parts;
    parts.translations = {0x04B00409};
    parts.tables = {{u"040904B0", {{u"CompanyName", u"Company"}, {u"ProductVersion", version}}}};
    const test::Bytes image =
        test::peImage(test::PeKind::Pe32, {{0x0409, test::versionBlock(parts)}});
    ASSERT_EQ(platform::createFile(folder_ / name, image), platform::FileError::None);
  }

  platform::TempFolder folder_;
  Object info_ = Owned<VersionInfo>::make().object();
};

TEST_F(VersionInfoTest, APathIsReadAtOnceAndAnotherOneForgetsIt) {
  createImage(u"one.dll", u"1.2.3");
  info_.put(u"FullPathName", folder_ / u"one.dll");
  EXPECT_EQ(info_.get(u"Available").boolVal, -1);
  EXPECT_EQ(textOf(info_.get(u"ProductVersion")), u"1.2.3");
  for (const std::int32_t outside : {-1, 15, 2'000'000'000}) {
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
  createImage(u"b.dll", u"2.0");
  ASSERT_EQ(platform::createFile(folder_ / u"c.txt", {}), platform::FileError::None);
  ASSERT_EQ(platform::createFolder(folder_ / u"d.dll"), platform::FileError::None);
  const Dictionary found = Dictionary::create();
  found.add(u"b.dll", u"old");
  const auto list = [&](const std::u16string& folder, const Object& target) {
    return info_.call(u"V7000_ListFileVersionsAsDictionary", folder, target).lVal;
  };
  EXPECT_EQ(list(folder_ / u"", found.object()), 0);
  EXPECT_EQ(found.count(), 1);
  EXPECT_EQ(textOf(found.item(u"b.dll")), u"2.0");
  EXPECT_EQ(list(folder_ / u"nowhere", found.object()), -1);
  EXPECT_EQ(list(folder_.path(), Object()), 91);  // nothing to put the entries into
}

}  // namespace
}  // namespace quendal
